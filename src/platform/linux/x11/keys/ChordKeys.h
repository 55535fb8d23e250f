#pragma once

#include <QPointer>
#include <xcb/xcb.h>

#include <optional>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::x11 {

class X11Connection;
class X11Keymap;

/// The keys of one chord at a time, typed through the XTest extension. Nothing of it stays down
/// when the object ends.
class ChordKeys {
  public:
    ChordKeys(X11Connection &connection, X11Keymap &keymap);
    ChordKeys(const ChordKeys &) = delete;
    ChordKeys &operator=(const ChordKeys &) = delete;
    ~ChordKeys();

    /// The modifier alone goes down, ahead of its key. False when no key of it may go down: sticky
    /// keys are on, or the keyboard map has none.
    bool hold(xkb_keysym_t modifier);

    /// False when the keyboard map lacks a key, or nothing is typed any more.
    bool canPress(xkb_keysym_t modifier, xkb_keysym_t key);

    /// Types nothing when it cannot.
    void press(xkb_keysym_t modifier, xkb_keysym_t key);

    /// Lets go of what is down, while there is a connection.
    void release();

    void tap(xkb_keysym_t key);

    /// Lets go of what is down, and types nothing any more.
    void retire();

  private:
    void send(quint8 type, xcb_keycode_t key);

    QPointer<X11Connection> connection_;
    X11Keymap &keymap_;
    std::optional<xcb_keycode_t> modifier_;
    std::optional<xcb_keycode_t> key_;
    std::optional<quint8> groupBefore_;
    std::optional<quint8> locksBefore_;
};

} // namespace quillmender::x11
