#pragma once

#include <QByteArray>
#include <xcb/xcb.h>

#include <array>

namespace quillmender::x11 {

class X11Connection;

/// What `_NET_WM_DESKTOP` says of a window that is on every one of them.
inline constexpr quint32 allDesktops = 0xffffffff;

/// Sends an EWMH request about the window to the window manager.
void sendToWindowManager(X11Connection &connection, xcb_window_t window, const QByteArray &message,
                         const std::array<quint32, 5> &data);

} // namespace quillmender::x11
