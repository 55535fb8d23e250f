#pragma once

#include "platform/Workspace.h"

namespace quillmender::wayland {

class SourceApplications;

/// Applications as the compositor tells of their windows.
class WaylandWorkspace : public Workspace {
  public:
    /// The applications must outlive the object.
    explicit WaylandWorkspace(SourceApplications &applications) : applications_(applications) {}

    RunningApplicationRef frontmostApplication() override;
    bool activate(RunningApplicationRef application) override;
    std::optional<DesktopRect> windowFrame(RunningApplicationRef application) override;
    bool openUrl(const QUrl &url) override;
    bool openSettingsPage(SettingsPage page) override;

  private:
    SourceApplications &applications_;
};

} // namespace quillmender::wayland
