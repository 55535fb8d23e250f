#pragma once

#include "platform/Workspace.h"

#include <xcb/xcb.h>

namespace quillmender::x11 {

/// One window and the process behind it (0 when unknown). It stays valid when the window goes;
/// nothing can then be done with it.
class X11RunningApplication : public RunningApplication {
  public:
    X11RunningApplication(xcb_window_t window, qint64 processId)
        : window_(window),
          processId_(processId) {}

    bool isSame(const RunningApplication &other) const override {
        const auto *own = dynamic_cast<const X11RunningApplication *>(&other);
        return own && own->window_ == window_ && own->processId_ == processId_;
    }

    xcb_window_t window() const { return window_; }
    qint64 processId() const override { return processId_; }

    /// Whether its window has been destroyed; told only where no process tells it from the next
    /// window with its number.
    bool isGone() const { return isGone_; }
    void setGone() { isGone_ = true; }

  private:
    xcb_window_t window_;
    qint64 processId_;
    bool isGone_ = false;
};

} // namespace quillmender::x11
