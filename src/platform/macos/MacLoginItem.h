#pragma once

#include "platform/LoginItem.h"
#include "platform/macos/ObjcRef.h"

#import <ServiceManagement/ServiceManagement.h>

namespace quillmender {

/// The registration of the application bundle itself with the service management.
class MacLoginItem : public LoginItem {
  public:
    MacLoginItem();

    /// A status that the system has added since then comes through as its number.
    LoginItemStatus status() override;
    std::optional<QString> registerItem() override;
    std::optional<QString> unregisterItem() override;
    void openSystemSettings() override;

  private:
    ObjcRef<SMAppService> service_;
};

} // namespace quillmender
