#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/keys/X11Keymap.h"
#include "support/StickyKeys.h"

#include <xcb/xtest.h>

namespace quillmender::x11 {

/// The user's hands on the keyboard.
class KeyTyper {
  public:
    explicit KeyTyper(X11Connection &connection) : connection_(connection), keymap_(connection) {}

    xcb_keycode_t key(xkb_keysym_t symbol) { return keymap_.keysOf(symbol).value(0); }
    void down(xkb_keysym_t symbol) { fake(XCB_KEY_PRESS, symbol); }
    void up(xkb_keysym_t symbol) { fake(XCB_KEY_RELEASE, symbol); }
    void tap(xkb_keysym_t symbol) {
        down(symbol);
        up(symbol);
    }
    void lockGroup(quint8 group) {
        keymap_.lockGroup(group);
        connection_.serverTime();
    }
    quint8 group() const { return keymap_.activeGroup(); }

    void switchStickyKeysOn() {
        quillmender::switchStickyKeysOn(connection_.xcb());
        connection_.serverTime();
    }
    bool hasStickyKeys() const { return stickyKeysAreOn(connection_.xcb()); }
    /// The modifiers that are in effect.
    quint16 state() const {
        const auto reply = replyTo(connection_.xcb(), xcb_query_pointer_reply,
                                   xcb_query_pointer(connection_.xcb(), connection_.root()));
        return reply ? reply->mask : quint16{0};
    }

  private:
    void fake(quint8 type, xkb_keysym_t symbol) {
        xcb_test_fake_input(connection_.xcb(), type, key(symbol), XCB_CURRENT_TIME, XCB_WINDOW_NONE,
                            0, 0, 0);
        // The server has acted on it before anything else of the test happens.
        connection_.serverTime();
    }

    X11Connection &connection_;
    X11Keymap keymap_;
};

} // namespace quillmender::x11
