#pragma once

#include "platform/Workspace.h"
#include "platform/linux/wayland/Toplevels.h"

#include <memory>

namespace quillmender::wayland {

/// One window and the process behind it. It stays valid when the window goes; nothing can then be
/// done with it.
class WaylandRunningApplication : public RunningApplication {
  public:
    /// `processId` is shared by all that stand for the window: it can be learnt later.
    WaylandRunningApplication(Toplevel toplevel, std::shared_ptr<const qint64> processId)
        : toplevel_(std::move(toplevel)),
          processId_(std::move(processId)) {}

    qint64 processId() const override { return *processId_; }

    bool isSame(const RunningApplication &other) const override {
        const auto *own = dynamic_cast<const WaylandRunningApplication *>(&other);
        return own && own->toplevel_ == toplevel_;
    }

    /// As it was when it was in front.
    const Toplevel &toplevel() const { return toplevel_; }
    const QByteArray &windowId() const { return toplevel_.id; }

  private:
    Toplevel toplevel_;
    std::shared_ptr<const qint64> processId_;
};

} // namespace quillmender::wayland
