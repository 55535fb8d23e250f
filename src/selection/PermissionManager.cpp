#include "selection/PermissionManager.h"

namespace quillmender {

PermissionManager::PermissionManager(AccessibilityAccess &access, Workspace &workspace)
    : access_(access),
      workspace_(workspace) {}

void PermissionManager::setAccessibilityGranted(bool granted) {
    publish(accessibilityGranted_, granted);
}

void PermissionManager::refresh() {
    setAccessibilityGranted(access_.isGranted());
}

void PermissionManager::requestAccessibilityPermission() {
    access_.request();
    refresh();
}

void PermissionManager::openAccessibilitySettings() {
    const QUrl url(QStringLiteral(
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
    if (url.isValid())
        workspace_.openUrl(url);
}

} // namespace quillmender
