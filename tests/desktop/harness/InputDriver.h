#pragma once

#include "desktop/harness/UserInput.h"

#include <xcb/xproto.h>

namespace quillmender::harness {

class XcbConnection;

/// What it does arrives at the X server as a device's events. It types characters of Latin-1, with
/// Shift where the layout wants it.
class InputDriver : public UserInput {
  public:
    explicit InputDriver(XcbConnection &connection) : connection_(connection) {}

    void press(xcb_keysym_t key) override;
    void release(xcb_keysym_t key) override;
    void chord(const QList<xcb_keysym_t> &keys) override;
    void type(const QString &text) override;
    void movePointer(QPoint position) override;
    void click(QPoint position, int button = 1) override;
    void doubleClick(QPoint position) override;

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
