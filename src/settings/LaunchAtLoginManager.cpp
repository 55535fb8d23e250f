#include "settings/LaunchAtLoginManager.h"

namespace quillmender {

LaunchAtLoginManager::LaunchAtLoginManager(LoginItem &service) : service_(service) {}

std::optional<QString> LaunchAtLoginManager::statusMessage(LoginItemStatus status) {
    switch (status) {
    case LoginItemStatus::enabled:
        return QStringLiteral("Quillmender will open automatically when you log in.");
    case LoginItemStatus::requiresApproval:
        return QStringLiteral("macOS needs approval in Login Items before Quillmender can start "
                              "automatically.");
    case LoginItemStatus::notFound:
        return QStringLiteral("Launch at Login is unavailable for this build.");
    case LoginItemStatus::notRegistered:
        break;
    }
    return std::nullopt;
}

} // namespace quillmender
