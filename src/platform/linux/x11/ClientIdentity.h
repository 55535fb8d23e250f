#pragma once

#include <QtGlobal>
#include <xcb/xcb.h>

namespace quillmender {

class X11Connection;

/// The process behind a window: what the window says of itself, else what the server knows of its
/// client. 0 when neither does.
qint64 processOfWindow(X11Connection &connection, xcb_window_t window);

/// Whether two windows were made by the same client, or by two clients of the same process (some
/// applications talk about selections on a connection of their own).
bool isSameApplication(X11Connection &connection, xcb_window_t first, xcb_window_t second);

} // namespace quillmender
