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
    bool activate(RunningApplicationRef application, quint32 options) override;
    std::optional<DesktopRect> windowFrame(RunningApplicationRef application) override;
    bool openUrl(const QUrl &url) override;

  private:
    ObjcRef<NSWorkspace> workspace_;
    ObjcRef<QuillmenderActivationObserver> observer_;
};

} // namespace quillmender
