#pragma once

#include "platform/Workspace.h"

namespace quillmender::x11 {

class ActiveWindow;
class X11Connection;

/// Applications as the window manager knows them.
class X11Workspace : public Workspace {
  public:
    X11Workspace(X11Connection &connection, ActiveWindow &activeWindow)
        : connection_(connection),
          activeWindow_(activeWindow) {}

    RunningApplicationRef frontmostApplication() override;
    bool activate(RunningApplicationRef application) override;
    std::optional<DesktopRect> windowFrame(RunningApplicationRef application) override;
    bool openUrl(const QUrl &url) override;
    bool openSettingsPage(SettingsPage page) override;

  private:
    X11Connection &connection_;
    ActiveWindow &activeWindow_;
};

} // namespace quillmender::x11
