#pragma once

#include "platform/Capabilities.h"
#include "platform/OwnWindows.h"
#include "selection/PermissionManager.h"
#include "settings/SettingsStore.h"
#include "ui/Theme.h"

#include <memory>

namespace quillmender {

class HostedWindow;
class SettingsView;

/// Owns the one settings window. It is made once and reused; closing only hides it.
class SettingsWindowController {
  public:
    /// Everything referred to outlives the controller.
    SettingsWindowController(SettingsStore &store, PermissionManager &permissionManager,
                             Theme &theme, OwnWindows &ownWindows,
                             const MissingCapabilities &missing = {});
    SettingsWindowController(const SettingsWindowController &) = delete;
    SettingsWindowController &operator=(const SettingsWindowController &) = delete;
    ~SettingsWindowController();

    void centre();
    void makeKeyAndOrderFront();

    HostedWindow *window() const { return window_.get(); }
    SettingsView *view() const { return view_; }

  private:
    SettingsView *view_; ///< owned by the window
    std::unique_ptr<HostedWindow> window_;
};

} // namespace quillmender
