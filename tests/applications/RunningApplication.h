#pragma once

#include "desktop/harness/ChildProcess.h"
#include "desktop/harness/Desktop.h"

namespace quillmender::applications {

/// An application that was started, perhaps by way of scripts and helper processes; constructed
/// means that its window is on the screen and active.
class RunningApplication {
  public:
    /// `title` is a part of the title of the window that counts; empty for any window.
    RunningApplication(harness::Desktop &desktop, const harness::Command &command,
                       const QString &title);

    xcb_window_t window() const { return window_; }
    QRect geometry() const;
    /// Asks the window manager for the focus and waits until it is there.
    void activate();

  private:
    xcb_window_t newestWindow() const;

    harness::Desktop &desktop_;
    QString title_;
    harness::ChildProcess process_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

} // namespace quillmender::applications
