#pragma once

#include "platform/Workspace.h"
#include "platform/linux/x11/PasteRecord.h"

namespace quillmender {

class ActiveWindow;
class X11Connection;

/// Applications as the window manager knows them.
class X11Workspace : public Workspace {
  public:
    /// `pastes` is told of what is activated.
    X11Workspace(X11Connection &connection, ActiveWindow &activeWindow, PasteRecord &pastes)
        : connection_(connection),
          activeWindow_(activeWindow),
          pastes_(pastes) {}

    RunningApplicationRef frontmostApplication() override;
    bool activate(RunningApplicationRef application) override;
    std::optional<DesktopRect> windowFrame(RunningApplicationRef application) override;
    bool openUrl(const QUrl &url) override;
    bool openSettingsPage(SettingsPage page) override;

  private:
    X11Connection &connection_;
    ActiveWindow &activeWindow_;
    PasteRecord &pastes_;
};

} // namespace quillmender
