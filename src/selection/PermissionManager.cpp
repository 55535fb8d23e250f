#include "selection/PermissionManager.h"

namespace quillmender {

PermissionManager::PermissionManager(Accessibility &accessibility, Workspace &workspace)
    : accessibility_(accessibility),
      workspace_(workspace) {}

void PermissionManager::setAccessibilityGranted(bool granted) {
    publish(accessibilityGranted_, granted);
}

void PermissionManager::refresh() {
    setAccessibilityGranted(accessibility_.isProcessTrusted());
}

void PermissionManager::requestAccessibilityPermission() {
    accessibility_.isProcessTrustedWithPrompt();
    refresh();
}

void PermissionManager::openAccessibilitySettings() {
    const QUrl url(QStringLiteral(
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
    if (url.isValid())
        workspace_.openUrl(url);
}

} // namespace quillmender
