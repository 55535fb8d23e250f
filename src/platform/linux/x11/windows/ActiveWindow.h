#pragma once

#include "platform/linux/x11/windows/WindowWatch.h"
#include "platform/linux/x11/windows/X11RunningApplication.h"

#include <QObject>

#include <memory>
#include <vector>

namespace quillmender::x11 {

class X11Connection;

/// Follows which window is active: the window manager's word where there is one (EWMH), else the
/// window with the input focus.
class ActiveWindow : public QObject {
    Q_OBJECT

  public:
    explicit ActiveWindow(X11Connection &connection);

    /// The active window, whoever's it is; 0 when none is.
    xcb_window_t current() const;

    /// The active application that is not this program, else the last one that was and is still
    /// on screen. Null when there is none.
    std::shared_ptr<const X11RunningApplication> frontmost();

    /// Whether keys that are typed now arrive in this window.
    bool isInFront(xcb_window_t window) const;

    /// Activates as a pager would, or by the focus alone without a window manager.
    void activate(xcb_window_t window);

    bool isViewable(xcb_window_t window) const;

  Q_SIGNALS:
    void changed();

  private:
    /// An application without a process, which only its window's end tells from the next.
    struct Nameless {
        std::weak_ptr<X11RunningApplication> application;
        std::unique_ptr<WindowWatch> watch;
    };

    void handleEvent(const xcb_generic_event_t *event);
    void noteDestroyed(xcb_window_t window);
    void remember();
    void showDesktopOf(xcb_window_t window, xcb_timestamp_t time);
    bool isLastStillInFront() const;
    bool hasWindowManager() const;
    bool isForeign(xcb_window_t window) const;
    xcb_window_t focus() const;
    xcb_window_t underPointer() const;
    xcb_window_t topLevelOf(xcb_window_t window) const;

    X11Connection &connection_;
    std::shared_ptr<const X11RunningApplication> last_;
    std::vector<Nameless> nameless_;
    xcb_window_t manager_ = XCB_WINDOW_NONE; ///< the window of the window manager when last asked
};

} // namespace quillmender::x11
