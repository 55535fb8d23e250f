#pragma once

#include "platform/Workspace.h"

namespace quillmender {

/// No other applications are known.
class NoneWorkspace : public Workspace {
  public:
    RunningApplicationRef frontmostApplication() override { return nullptr; }
    bool activate(RunningApplicationRef) override { return false; }
    std::optional<DesktopRect> windowFrame(RunningApplicationRef) override { return std::nullopt; }
    bool openUrl(const QUrl &) override { return false; }
    bool openSettingsPage(SettingsPage) override { return false; }
};

} // namespace quillmender
