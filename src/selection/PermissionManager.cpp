#include "selection/PermissionManager.h"

namespace quillmender {

PermissionManager::PermissionManager(AccessibilityAccess &access, Workspace &workspace)
    : access_(access),
      workspace_(workspace) {}

void PermissionManager::setAccessibilityGranted(bool granted) {
    publish(accessibilityGranted_, granted);
}

void PermissionManager::ask() {
    access_.ask();
}

void PermissionManager::refresh() {
    setAccessibilityGranted(access_.isGranted());
}

void PermissionManager::requestAccessibilityPermission() {
    access_.request();
    refresh();
}

void PermissionManager::openAccessibilitySettings() {
    workspace_.openSettingsPage(SettingsPage::accessibility);
}

} // namespace quillmender
