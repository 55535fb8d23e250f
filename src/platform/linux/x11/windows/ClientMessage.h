#pragma once

#include <QByteArray>
#include <xcb/xcb.h>

#include <array>

namespace quillmender::x11 {

class X11Connection;

/// Sends an EWMH request about the window to the window manager.
void sendToWindowManager(X11Connection &connection, xcb_window_t window, const QByteArray &message,
                         const std::array<quint32, 5> &data);

} // namespace quillmender::x11
