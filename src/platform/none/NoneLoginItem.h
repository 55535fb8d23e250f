#pragma once

#include "platform/LoginItem.h"

namespace quillmender {

/// The system cannot start the program at login.
class NoneLoginItem : public LoginItem {
  public:
    LoginItemStatus status() override { return LoginItemStatus::notFound; }
    std::optional<QString> registerItem() override { return description(); }
    std::optional<QString> unregisterItem() override { return description(); }
    void openSystemSettings() override {}

  private:
    static QString description() { return QStringLiteral("The operation is not supported."); }
};

} // namespace quillmender
