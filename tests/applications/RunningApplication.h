#pragma once

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/ChildProcess.h"

namespace quillmender::applications {

/// An application that was started, perhaps by way of scripts and helper processes; constructed
/// means that its window is on the screen and active.
class RunningApplication {
  public:
    /// `title` is a part of the title of the window that counts; empty for any window.
    RunningApplication(harness::AnyDesktop &desktop, const harness::Command &command,
                       const QString &title);

    harness::WindowId window() const { return window_; }
    QRect geometry() const;
    /// Asks the window manager for the focus and waits until it is there.
    void activate();

  private:
    harness::WindowId newestWindow() const;

    harness::AnyDesktop &desktop_;
    QString title_;
    harness::ChildProcess process_;
    harness::WindowId window_ = 0;
};

} // namespace quillmender::applications
