#pragma once

#include "platform/linux/Obstacle.h"
#include "platform/linux/x11/keys/ChordSurroundings.h"
#include "platform/linux/x11/windows/X11RunningApplication.h"

#include <QCoroTask>

#include <chrono>
#include <memory>

namespace quillmender::x11 {

/// The window that a chord goes to: whether keys arrive in it, and are attended to.
class TargetWindow {
  public:
    TargetWindow(const ChordSurroundings &around,
                 std::shared_ptr<const X11RunningApplication> application)
        : around_(around),
          application_(std::move(application)) {}

    xcb_window_t id() const { return application_->window(); }

    /// Its name for the log.
    QString name() const;

    /// Waits for the window manager to bring it to the front, and for the application to attend to
    /// its events, as long as `patience` for each.
    QCoro::Task<Obstacle> reach(std::chrono::milliseconds patience) const;

    /// Why keys that are typed now do not arrive in it, as the one that was meant.
    Obstacle keepsKeysAway() const;

  private:
    QCoro::Task<bool> comesToTheFront(std::chrono::milliseconds limit) const;

    ChordSurroundings around_;
    std::shared_ptr<const X11RunningApplication> application_;
};

} // namespace quillmender::x11
