#include "platform/linux/x11/keys/X11HotKey.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/keys/X11Keymap.h"

namespace quillmender::x11 {

X11HotKey::X11HotKey(X11Connection &connection, X11Keymap &keymap, QKeyCombination keys,
                     xkb_keysym_t symbol, std::function<void()> handler)
    : HeldHotKey(std::move(handler)),
      connection_(connection),
      keymap_(keymap),
      asked_(keys),
      symbol_(symbol) {
    connect(&connection_, &X11Connection::eventReceived, this, &X11HotKey::handleEvent);
    connect(&keymap_, &X11Keymap::changed, this, &X11HotKey::handleKeymapChange);
    grab();
}

X11HotKey::~X11HotKey() {
    ungrab();
}

std::optional<QKeyCombination> X11HotKey::keys() const {
    return isGrabbed() ? std::optional(asked_) : std::nullopt;
}

quint16 X11HotKey::wantedState() {
    const Qt::KeyboardModifiers modifiers = asked_.keyboardModifiers();
    quint16 state = 0;
    if (modifiers.testFlag(Qt::ControlModifier))
        state |= XCB_MOD_MASK_CONTROL;
    if (modifiers.testFlag(Qt::ShiftModifier))
        state |= XCB_MOD_MASK_SHIFT;
    if (modifiers.testFlag(Qt::AltModifier)) {
        const quint16 alt = keymap_.modifierOf(XKB_KEY_Alt_L);
        state |= alt != 0 ? alt : quint16{XCB_MOD_MASK_1};
    }
    if (modifiers.testFlag(Qt::MetaModifier)) {
        const quint16 super = keymap_.modifierOf(XKB_KEY_Super_L);
        state |= super != 0 ? super : quint16{XCB_MOD_MASK_4};
    }
    return state;
}

QList<quint16> X11HotKey::wantedLockStates() {
    QList<quint16> states{0};
    for (const quint16 lock : {quint16{XCB_MOD_MASK_LOCK}, keymap_.modifierOf(XKB_KEY_Num_Lock),
                               keymap_.modifierOf(XKB_KEY_Scroll_Lock)}) {
        for (const quint16 state : QList<quint16>(states)) {
            if (!states.contains(state | lock))
                states.append(state | lock);
        }
    }
    return states;
}

bool X11HotKey::grab() {
    keyCodes_ = keymap_.keysOf(symbol_);
    state_ = wantedState();
    lockStates_ = wantedLockStates();
    QList<xcb_void_cookie_t> cookies;
    for (const xcb_keycode_t key : keyCodes_) {
        for (const quint16 locks : lockStates_)
            cookies.append(xcb_grab_key_checked(connection_.xcb(), 0, connection_.root(),
                                                state_ | locks, key, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC));
    }
    bool isComplete = !keyCodes_.isEmpty();
    for (const xcb_void_cookie_t cookie : cookies) {
        if (adoptXcb(xcb_request_check(connection_.xcb(), cookie)))
            isComplete = false;
    }
    if (!isComplete)
        ungrab();
    return isComplete;
}

void X11HotKey::ungrab() {
    for (const xcb_keycode_t key : keyCodes_) {
        for (const quint16 locks : lockStates_)
            xcb_ungrab_key(connection_.xcb(), key, connection_.root(), state_ | locks);
    }
    keyCodes_.clear();
    xcb_flush(connection_.xcb());
}

// The server tells nobody that a grab has ended. What held it has mostly had a window, or the user
// goes on in another one: both change a property of the root window.
void X11HotKey::tryAgain() {
    if (isGrabbed() || !grab())
        return;
    qCInfo(x11Log, "the hot key is free again");
    Q_EMIT keysChanged();
}

void X11HotKey::handleKeymapChange() {
    const bool wasGrabbed = isGrabbed();
    const bool isSame = keyCodes_ == keymap_.keysOf(symbol_) && state_ == wantedState() &&
                        lockStates_ == wantedLockStates();
    if (wasGrabbed && isSame)
        return;
    ungrab();
    if (grab() == wasGrabbed)
        return;
    if (wasGrabbed)
        qCWarning(x11Log, "the hot key was lost with a change of the keyboard map");
    else
        qCInfo(x11Log, "the hot key came with a change of the keyboard map");
    Q_EMIT keysChanged();
}

void X11HotKey::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_KEY_PRESS)
        handlePress(eventCast<xcb_key_press_event_t>(event));
    else if (eventType(event) == XCB_KEY_RELEASE &&
             eventCast<xcb_key_release_event_t>(event).detail == heldKey_)
        heldKey_ = 0;
    else if (eventType(event) == XCB_PROPERTY_NOTIFY &&
             eventCast<xcb_property_notify_event_t>(event).window == connection_.root())
        tryAgain();
}

void X11HotKey::handlePress(const xcb_key_press_event_t &event) {
    // Should a release ever escape us, the next press must not count as a repeat for ever.
    constexpr quint32 longestRepeatGap = 3000;
    const bool isRepeat = event.detail == heldKey_ && event.time - lastPress_ < longestRepeatGap;
    lastPress_ = event.time;
    if (isRepeat)
        return;
    const auto locks = static_cast<quint16>(lockStates_.value(lockStates_.size() - 1));
    const quint16 modifiers = event.state & 0xff & ~locks;
    if (!keyCodes_.contains(event.detail) || modifiers != state_)
        return;
    heldKey_ = event.detail;
    press();
}

} // namespace quillmender::x11
