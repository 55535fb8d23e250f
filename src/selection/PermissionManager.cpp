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
    workspace_.openSettingsPage(SettingsPage::accessibility);
}

} // namespace quillmender
