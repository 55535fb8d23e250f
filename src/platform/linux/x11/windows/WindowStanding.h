#pragma once

#include "platform/linux/x11/windows/WindowWatch.h"

#include <QObject>
#include <QSet>

#include <memory>

namespace quillmender::x11 {

class ActiveWindow;
class X11Connection;

/// The standing of this program's own windows by the hints of the EWMH. The server must know of a
/// window: what the toolkit asked for about it has arrived there.
class WindowStanding : public QObject {
    Q_OBJECT

  public:
    WindowStanding(X11Connection &connection, ActiveWindow &activeWindow);

    /// Above others, on every desktop, not in task bar or pager. Before or after mapping.
    void applyPanelAttributes(xcb_window_t window);

    /// Has the window manager tell in `_NET_FRAME_EXTENTS` what frame the window will get, so that
    /// it fits the screen at its first show. Not every one does before it has drawn the frame.
    void askForFrame(xcb_window_t window);

    /// Asks for the focus and the front as a pager would, past focus-stealing prevention. A window
    /// that is about to be mapped is activated when it is. Renews a panel's attributes, which
    /// window managers forget when a window is hidden.
    void activate(xcb_window_t window);

    /// Whether somebody puts the windows together who knows of transparency. One round trip.
    bool hasCompositor();

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void activateMapped(xcb_window_t window);
    void writeState(xcb_window_t window);
    void requestState(xcb_window_t window);

    X11Connection &connection_;
    ActiveWindow &activeWindow_;
    QSet<xcb_window_t> panels_;
    xcb_window_t awaited_ = XCB_WINDOW_NONE;
    std::unique_ptr<WindowWatch> watch_;
};

} // namespace quillmender::x11
