#pragma once

#include "platform/HeldHotKey.h"

#include <QList>
#include <xcb/xcb.h>

#include <xkbcommon/xkbcommon.h>

namespace quillmender::x11 {

class X11Connection;
class X11Keymap;

/// A hot key as passive grabs on the root window, in every state of Caps, Num and Scroll Lock. The
/// keyboard stays grabbed until the key is released, so that nothing of it reaches a window. Keys
/// that another client has are taken when they are seen to be free.
class X11HotKey : public HeldHotKey {
    Q_OBJECT

  public:
    /// `symbol` is what the key of the combination types.
    X11HotKey(X11Connection &connection, X11Keymap &keymap, QKeyCombination keys,
              xkb_keysym_t symbol, std::function<void()> handler);
    ~X11HotKey() override;

    std::optional<QKeyCombination> keys() const override;

  private:
    bool isGrabbed() const { return !keyCodes_.isEmpty(); }

    void handleEvent(const xcb_generic_event_t *event);
    void handlePress(const xcb_key_press_event_t &event);
    void handleKeymapChange();
    void tryAgain();
    bool grab();
    void ungrab();
    quint16 wantedState();
    QList<quint16> wantedLockStates();

    X11Connection &connection_;
    X11Keymap &keymap_;
    const QKeyCombination asked_;
    const xkb_keysym_t symbol_;
    QList<xcb_keycode_t> keyCodes_; ///< with `state_` and `lockStates_` what is grabbed
    quint16 state_ = 0;
    QList<quint16> lockStates_;
    xcb_keycode_t heldKey_ = 0;
    xcb_timestamp_t lastPress_ = XCB_CURRENT_TIME;
};

} // namespace quillmender::x11
