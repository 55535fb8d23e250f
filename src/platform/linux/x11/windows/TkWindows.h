#pragma once

#include <xcb/xcb.h>

namespace quillmender::x11 {

class X11Connection;

/// Whether the window is one of Tk's, which pastes beside a selection instead of in its place. Tk
/// says nothing of it on the window itself; its programs are listed on the root window.
bool isTkWindow(X11Connection &connection, xcb_window_t window);

} // namespace quillmender::x11
