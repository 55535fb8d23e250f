#pragma once

#include <QList>
#include <QRect>
#include <QString>
#include <xcb/xproto.h>

#include <optional>

namespace quillmender::harness {

class XcbConnection;

/// What the window manager tells of the managed windows.
class Windows {
  public:
    explicit Windows(XcbConnection &connection) : connection_(connection) {}

    /// In the order in which they were mapped.
    QList<xcb_window_t> all() const;
    /// What the root window shows, menus and other windows that no one manages included.
    QList<xcb_window_t> viewable() const;
    /// 0 when no window is active.
    xcb_window_t active() const;
    QString title(xcb_window_t window) const;
    qint64 processId(xcb_window_t window) const;
    bool isViewable(xcb_window_t window) const;
    /// In pixels of the screen, without the frame.
    QRect geometry(xcb_window_t window) const;

    /// The newest viewable window of the process; 0 when it has none.
    xcb_window_t ofProcess(qint64 processId) const;
    /// The newest viewable window with exactly this title; 0 when there is none.
    xcb_window_t titled(const QString &title) const;

    /// Asks the window manager, as a task bar would, and waits until the window is active.
    void activate(xcb_window_t window);
    /// Asks the window manager to put the window's own upper left corner there, and waits for it.
    void move(xcb_window_t window, QPoint position);
    /// Asks the window to close, as its title bar's button does.
    void close(xcb_window_t window);

  private:
    void sendToRoot(xcb_window_t window, const char *type, quint32 first);
    void sendToRoot(const xcb_client_message_event_t &event);

    XcbConnection &connection_;
};

} // namespace quillmender::harness
