#pragma once

#include "platform/Workspace.h"
#include "platform/macos/ActivationObserver.h"
#include "platform/macos/ObjcRef.h"

#import <AppKit/AppKit.h>

namespace quillmender {

/// The shared workspace. Its own activation, by the panel or a window, does not make the program
/// itself the frontmost application.
class MacWorkspace : public Workspace {
  public:
    MacWorkspace();
    ~MacWorkspace() override;

    RunningApplicationRef frontmostApplication() override;
    /// With the empty option set.
    bool activate(RunningApplicationRef application) override;
    std::optional<DesktopRect> windowFrame(RunningApplicationRef application) override;
    bool openUrl(const QUrl &url) override;
    bool openSettingsPage(SettingsPage page) override;

  private:
    ObjcRef<NSWorkspace> workspace_;
    ObjcRef<QuillmenderActivationObserver> observer_;
};

} // namespace quillmender
