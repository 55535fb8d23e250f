#pragma once

#include "model/Observable.h"
#include "platform/AccessibilityAccess.h"
#include "platform/Workspace.h"

namespace quillmender {

/// Whether this program may read and write other applications' texts, as of the last time that
/// somebody asked. It never asks by itself.
class PermissionManager : public Observable {
    Q_OBJECT

  public:
    PermissionManager(AccessibilityAccess &access, Workspace &workspace);

    bool accessibilityGranted() const { return accessibilityGranted_; }
    void setAccessibilityGranted(bool granted);

    /// Puts the question to the system that `refresh`, soon after, waits for the answer of.
    void ask();

    /// Asks the system now and publishes its answer.
    void refresh();

    /// Asks the system to show its prompt, then publishes the state.
    void requestAccessibilityPermission();

    /// Opens the Accessibility page of the system's privacy settings, where there is one.
    void openAccessibilitySettings();

  private:
    AccessibilityAccess &access_;
    Workspace &workspace_;
    bool accessibilityGranted_ = false;
};

} // namespace quillmender
