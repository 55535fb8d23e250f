#pragma once

#include <QCoroTask>
#include <QList>
#include <xcb/xcb.h>

namespace quillmender::x11 {

class X11Connection;
class X11Keymap;

/// The keys of the hot key that the user may still hold: modifiers (not the locks) and Space.
class HeldKeys {
  public:
    HeldKeys(X11Connection &connection, X11Keymap &keymap)
        : connection_(connection),
          keymap_(keymap) {}

    QList<xcb_keycode_t> now() const;

    /// Waits up to 300 ms for the user to let go, then lets go for them. A hot key's grab of the
    /// keyboard is kept until that is done, because a held Space would repeat into the
    /// application. False when the server insists that a key is down.
    QCoro::Task<bool> release();

  private:
    QCoro::Task<bool> waitUntilUp(std::chrono::milliseconds limit);

    X11Connection &connection_;
    X11Keymap &keymap_;
};

} // namespace quillmender::x11
