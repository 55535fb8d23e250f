#pragma once

#include "desktop/harness/wayland/Compositor.h"
#include "desktop/harness/wayland/ToplevelWindows.h"

namespace quillmender::harness {

class LabwcCompositor : public Compositor {
  public:
    LabwcCompositor(const Options &options, const Place &place);

    ChildProcess &process() override { return *process_; }
    ToplevelWindows &windows() override { return *windows_; }
    WaylandUser &user() override { return *user_; }
    void reload() override;

  private:
    std::unique_ptr<ChildProcess> process_;
    std::unique_ptr<WaylandUser> user_;
    std::unique_ptr<ToplevelWindows> windows_;
};

} // namespace quillmender::harness
