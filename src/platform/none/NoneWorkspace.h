#pragma once

#include "platform/Workspace.h"

namespace quillmender {

/// No other applications are known.
class NoneWorkspace : public Workspace {
  public:
    RunningApplicationRef frontmostApplication() override { return nullptr; }
    bool activate(RunningApplicationRef, quint32) override { return false; }
    std::optional<DesktopRect> windowFrame(RunningApplicationRef) override { return std::nullopt; }
    bool openUrl(const QUrl &) override { return false; }
};

} // namespace quillmender
