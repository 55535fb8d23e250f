#pragma once

#include <QList>
#include <QPoint>
#include <QString>
#include <xcb/xproto.h>

namespace quillmender::harness {

class XcbConnection;

/// A keyboard and a mouse: what it does arrives at the X server as a device's events. Keys are
/// named by X keysyms (XK_...), of the first group of the current layout.
class InputDriver {
  public:
    explicit InputDriver(XcbConnection &connection) : connection_(connection) {}

    void press(xcb_keysym_t key);
    void release(xcb_keysym_t key);

    /// Presses the keys in their order and releases them in the opposite one.
    void chord(const QList<xcb_keysym_t> &keys);

    /// One stroke per character of Latin-1, with Shift where the layout wants it; a line break is
    /// Return. Throws HarnessError for a character that is not on the keyboard.
    void type(const QString &text);

    /// Position in pixels of the screen. Button 1 is the left one.
    void movePointer(QPoint position);
    void click(QPoint position, int button = 1);
    void doubleClick(QPoint position);

  private:
    struct Stroke {
        xcb_keycode_t keyCode;
        bool shift;
    };

    Stroke strokeOf(xcb_keysym_t key);
    void send(quint8 type, quint8 detail, QPoint position = {}, int delayMs = 0);

    XcbConnection &connection_;
};

} // namespace quillmender::harness
