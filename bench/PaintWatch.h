#pragma once

#include "bench/Samples.h"

#include <QSize>

#include <chrono>

namespace quillmender::bench {

/// Hears from the desktop of what is drawn on the screen, apart from whoever draws it.
class PaintWatch {
  public:
    PaintWatch() = default;
    PaintWatch(const PaintWatch &) = delete;
    PaintWatch &operator=(const PaintWatch &) = delete;
    virtual ~PaintWatch() = default;

    /// Forgets what was drawn so far.
    virtual void start() = 0;

    /// The moment since `start` at which a window of that size has been painted. Throws
    /// HarnessError when none is.
    virtual TimePoint waitForPaint(QSize window) = 0;

    /// Returns when nothing has been drawn for that long.
    virtual void waitUntilStill(std::chrono::milliseconds quiet) = 0;
};

} // namespace quillmender::bench
