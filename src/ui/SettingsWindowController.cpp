#include "ui/SettingsWindowController.h"

#include "ui/HostedWindow.h"
#include "ui/SettingsView.h"

namespace quillmender {

namespace {
constexpr QSize contentSize(760, 820);
} // namespace

SettingsWindowController::SettingsWindowController(SettingsStore &store,
                                                   PermissionManager &permissionManager,
                                                   Theme &theme, OwnWindows &ownWindows,
                                                   const MissingCapabilities &missing)
    : view_(new SettingsView(
          store, permissionManager, [this] { window_->close(); }, theme, missing)),
      window_(std::make_unique<HostedWindow>(QStringLiteral("Quillmender Settings"), contentSize,
                                             view_, ownWindows)) {}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::centre() {
    window_->centre();
}

void SettingsWindowController::makeKeyAndOrderFront() {
    const bool wasVisible = window_->isVisible();
    if (!wasVisible)
        view_->resetFocus();
    window_->makeKeyAndOrderFront();
}

} // namespace quillmender
