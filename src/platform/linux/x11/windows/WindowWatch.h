#pragma once

#include <QtGlobal>
#include <xcb/xcb.h>

namespace quillmender::x11 {

class X11Connection;

/// While it lives, the connection is told of property and structure changes of one foreign window.
/// Several watches of the same window share one subscription.
class WindowWatch {
  public:
    WindowWatch(X11Connection &connection, xcb_window_t window);
    WindowWatch(const WindowWatch &) = delete;
    WindowWatch &operator=(const WindowWatch &) = delete;
    ~WindowWatch();

  private:
    X11Connection &connection_;
    xcb_window_t window_;
};

} // namespace quillmender::x11
