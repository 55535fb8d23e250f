#pragma once

#include "desktop/harness/Desktop.h"

#include <optional>

namespace quillmender {

/// A tray that takes up windows (System Tray Protocol), alone on the desktop.
class WindowTray {
  public:
    enum class Shade { light, dark };

    WindowTray(harness::Desktop &desktop, Shade shade);

    harness::ChildProcess &process() { return process_; }

  private:
    harness::ChildProcess process_;
};

/// A desktop's panel with a status area that asks items on the bus (StatusNotifierItem).
class BusPanel {
  public:
    explicit BusPanel(harness::Desktop &desktop);

  private:
    std::optional<harness::ChildProcess> settings_;
    std::optional<harness::ChildProcess> panel_;
};

} // namespace quillmender
