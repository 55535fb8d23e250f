#pragma once

#include "desktop/harness/WindowList.h"

#include <xcb/xproto.h>

#include <optional>

namespace quillmender::harness {

class XcbConnection;

/// What the window manager tells of the managed windows.
class Windows : public WindowList {
  public:
    explicit Windows(XcbConnection &connection) : connection_(connection) {}

    QList<xcb_window_t> all() const override;
    /// What the root window shows, menus and other windows that no one manages included.
    QList<xcb_window_t> viewable() const;
    xcb_window_t active() const override;
    QString title(xcb_window_t window) const override;
    qint64 processId(xcb_window_t window) const override;
    bool isViewable(xcb_window_t window) const override;
    QRect geometry(xcb_window_t window) const override;

    /// The newest viewable window of the process; 0 when it has none.
    xcb_window_t ofProcess(qint64 processId) const;
    xcb_window_t titled(const QString &title) const override;
    xcb_window_t openedBy(qint64 processId, const QList<xcb_window_t> &before) const override;

    void activate(xcb_window_t window) override;
    /// Asks the window manager to put the window's own upper left corner there, and waits for it.
    void move(xcb_window_t window, QPoint position);
    void close(xcb_window_t window) override;

  private:
    void sendToRoot(xcb_window_t window, const char *type, quint32 first);
    void sendToRoot(const xcb_client_message_event_t &event);

    XcbConnection &connection_;
};

} // namespace quillmender::harness
