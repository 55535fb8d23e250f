#pragma once

#include "desktop/harness/wayland/Compositor.h"
#include "desktop/harness/wayland/SwayWindows.h"

namespace quillmender::harness {

class SwayCompositor : public Compositor {
  public:
    /// The name is that of its files, where there is more than one.
    SwayCompositor(const Options &options, const Place &place,
                   const QString &name = QStringLiteral("sway"));

    ChildProcess &process() override { return *process_; }
    SwayWindows &windows() override { return windows_; }
    WaylandUser &user() override { return *user_; }
    void reload() override;

    const SwayIpc &ipc() const { return ipc_; }

  private:
    SwayIpc ipc_;
    SwayWindows windows_;
    std::unique_ptr<ChildProcess> process_;
    std::unique_ptr<WaylandUser> user_;
};

} // namespace quillmender::harness
