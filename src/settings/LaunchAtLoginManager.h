#pragma once

#include "platform/LoginItem.h"

#include <QString>

#include <optional>

namespace quillmender {

/// The program's own login item. The system's registration is the only truth; nothing is stored.
class LaunchAtLoginManager {
  public:
    explicit LaunchAtLoginManager(LoginItem &service);

    LoginItem &service() { return service_; }

    /// The line that the settings show for a status; absent for "not registered".
    static std::optional<QString> statusMessage(LoginItemStatus status);

  private:
    LoginItem &service_;
};

} // namespace quillmender
