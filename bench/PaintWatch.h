#pragma once

#include "bench/Samples.h"
#include "desktop/harness/XcbConnection.h"

#include <QSize>
#include <xcb/damage.h>

namespace quillmender::bench {

/// Hears from the X server of everything that is drawn on the screen, on a connection of its own.
class PaintWatch {
  public:
    explicit PaintWatch(const QString &display);

    /// Forgets what was drawn so far.
    void start();

    /// The moment at which an area as large as a window of that size has been drawn, as a toolkit
    /// draws a window that has just been mapped. Throws HarnessError when none is.
    TimePoint waitForPaint(QSize atLeast);

    /// Returns when nothing has been drawn for that long.
    void waitUntilStill(std::chrono::milliseconds quiet);

  private:
    harness::XcbPointer<xcb_generic_event_t> nextEvent(std::chrono::milliseconds deadline);

    harness::XcbConnection connection_;
    quint8 damageNotify_ = 0;
};

} // namespace quillmender::bench
