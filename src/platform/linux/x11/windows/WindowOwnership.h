#pragma once

#include <QtGlobal>
#include <xcb/xcb.h>

namespace quillmender::x11 {

class X11Connection;
class X11RunningApplication;

/// Whether the window still is one of the process that it was of when the handle was made: a server
/// gives the numbers of an application that has ended to the next one.
bool isStillItself(X11Connection &connection, const X11RunningApplication &application);

/// Whether two windows were made by the same client, or by two clients of the same process (some
/// applications talk about selections on a connection of their own).
bool isSameApplication(X11Connection &connection, xcb_window_t first, xcb_window_t second);

/// Whether a client that asks for a selection does so for the application with this window: it is
/// the same application, or a helper that it started, or the application runs in Wine, which has
/// one process for all that concerns selections.
bool isActingFor(X11Connection &connection, xcb_window_t requestor, xcb_window_t window);

} // namespace quillmender::x11
