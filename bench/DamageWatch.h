#pragma once

#include "bench/PaintWatch.h"
#include "desktop/harness/XcbConnection.h"

#include <xcb/damage.h>

namespace quillmender::bench {

/// Hears from the X server of everything that is drawn on the screen, on a connection of its own.
/// An area as large as the window has been drawn when a toolkit has drawn a window that was just
/// mapped.
class DamageWatch : public PaintWatch {
  public:
    explicit DamageWatch(const QString &display);

    void start() override;
    TimePoint waitForPaint(QSize atLeast) override;
    void waitUntilStill(std::chrono::milliseconds quiet) override;

  private:
    harness::XcbPointer<xcb_generic_event_t> nextEvent(std::chrono::milliseconds deadline);

    harness::XcbConnection connection_;
    quint8 damageNotify_ = 0;
};

} // namespace quillmender::bench
