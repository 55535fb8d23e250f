#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Keymap.h"
#include "platform/linux/x11/X11Log.h"

#include <ranges>

namespace quillmender {

namespace {

constexpr qint32 invalidParameter = -50;
constexpr qint32 hotKeyExists = -9878;
constexpr EventTypeSpec hotKeyPressed{0x6b657962, 5};

xkb_keysym_t symbolOf(quint32 keyCode) {
    switch (keyCode) {
    case 8:
        return XKB_KEY_c;
    case 9:
        return XKB_KEY_v;
    case 49:
        return XKB_KEY_space;
    default:
        return XKB_KEY_NoSymbol;
    }
}

} // namespace

X11HotKeys::X11HotKeys(X11Connection &connection, X11Keymap &keymap)
    : connection_(connection),
      keymap_(keymap) {
    connect(&connection_, &X11Connection::eventReceived, this, &X11HotKeys::handleEvent);
    connect(&keymap_, &X11Keymap::changed, this, &X11HotKeys::handleKeymapChange);
}

X11HotKeys::~X11HotKeys() {
    for (auto &[ref, hotKey] : hotKeys_)
        ungrab(hotKey);
}

EventHandlerInstallation X11HotKeys::installEventHandler(HotKeyEventHandler callback,
                                                         EventTypeSpec type, void *userData) {
    if (callback == nullptr || type != hotKeyPressed)
        return {invalidParameter, 0};
    handlers_.emplace(++lastRef_, Handler{callback, userData});
    return {noErr, lastRef_};
}

qint32 X11HotKeys::removeEventHandler(EventHandlerRef handler) {
    return handlers_.erase(handler) > 0 ? noErr : invalidParameter;
}

HotKeyRegistration X11HotKeys::registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id,
                                              quint32) {
    HotKey hotKey{symbolOf(keyCode), modifiers, id, {}, 0, {}};
    if (hotKey.symbol == XKB_KEY_NoSymbol)
        return {invalidParameter, 0};
    const bool isFree = grab(hotKey);
    if (!isFree)
        qCWarning(x11Log, "the hot key is taken by another program");
    hotKeys_.emplace(++lastRef_, std::move(hotKey));
    return {isFree ? noErr : hotKeyExists, lastRef_};
}

qint32 X11HotKeys::unregisterHotKey(HotKeyRef ref) {
    const auto found = hotKeys_.find(ref);
    if (found == hotKeys_.end())
        return invalidParameter;
    ungrab(found->second);
    hotKeys_.erase(found);
    return noErr;
}

quint16 X11HotKeys::stateOf(quint32 modifiers) {
    quint16 state = 0;
    if ((modifiers & 0x1000) != 0)
        state |= XCB_MOD_MASK_CONTROL;
    if ((modifiers & 0x200) != 0)
        state |= XCB_MOD_MASK_SHIFT;
    if ((modifiers & 0x800) != 0) {
        const quint16 alt = keymap_.modifierOf(XKB_KEY_Alt_L);
        state |= alt != 0 ? alt : quint16{XCB_MOD_MASK_1};
    }
    if ((modifiers & 0x100) != 0) {
        const quint16 super = keymap_.modifierOf(XKB_KEY_Super_L);
        state |= super != 0 ? super : quint16{XCB_MOD_MASK_4};
    }
    return state;
}

QList<quint16> X11HotKeys::lockStates() {
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

bool X11HotKeys::grab(HotKey &hotKey) {
    hotKey.keys = keymap_.keysOf(hotKey.symbol);
    hotKey.state = stateOf(hotKey.modifiers);
    hotKey.lockStates = lockStates();
    QList<xcb_void_cookie_t> cookies;
    for (const xcb_keycode_t key : hotKey.keys) {
        for (const quint16 locks : hotKey.lockStates)
            cookies.append(xcb_grab_key_checked(connection_.xcb(), 0, connection_.root(),
                                                hotKey.state | locks, key, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC));
    }
    bool isGrabbed = !hotKey.keys.isEmpty();
    for (const xcb_void_cookie_t cookie : cookies) {
        if (adoptXcb(xcb_request_check(connection_.xcb(), cookie)))
            isGrabbed = false;
    }
    if (!isGrabbed)
        ungrab(hotKey);
    return isGrabbed;
}

void X11HotKeys::ungrab(HotKey &hotKey) {
    for (const xcb_keycode_t key : hotKey.keys) {
        for (const quint16 locks : hotKey.lockStates)
            xcb_ungrab_key(connection_.xcb(), key, connection_.root(), hotKey.state | locks);
    }
    hotKey.keys.clear();
    xcb_flush(connection_.xcb());
}

// The server tells nobody that a grab has ended. What held it has mostly had a window, or the user
// goes on in another one: both change a property of the root window.
void X11HotKeys::tryAgain() {
    for (auto &[ref, hotKey] : hotKeys_) {
        if (!hotKey.isGrabbed() && grab(hotKey))
            qCInfo(x11Log, "the hot key is free again");
    }
}

void X11HotKeys::handleKeymapChange() {
    for (auto &[ref, hotKey] : hotKeys_) {
        if (!hotKey.isGrabbed()) {
            grab(hotKey);
            continue;
        }
        const bool isSame = hotKey.keys == keymap_.keysOf(hotKey.symbol) &&
                            hotKey.state == stateOf(hotKey.modifiers) &&
                            hotKey.lockStates == lockStates();
        if (isSame)
            continue;
        ungrab(hotKey);
        if (!grab(hotKey))
            qCWarning(x11Log, "the hot key was lost with a change of the keyboard map");
    }
}

void X11HotKeys::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_KEY_PRESS)
        handlePress(eventCast<xcb_key_press_event_t>(event));
    else if (eventType(event) == XCB_KEY_RELEASE &&
             eventCast<xcb_key_release_event_t>(event).detail == heldKey_)
        heldKey_ = 0;
    else if (eventType(event) == XCB_PROPERTY_NOTIFY &&
             eventCast<xcb_property_notify_event_t>(event).window == connection_.root())
        tryAgain();
}

void X11HotKeys::handlePress(const xcb_key_press_event_t &press) {
    // Should a release ever escape us, the next press must not count as a repeat for ever.
    constexpr quint32 longestRepeatGap = 3000;
    const bool isRepeat = press.detail == heldKey_ && press.time - lastPress_ < longestRepeatGap;
    lastPress_ = press.time;
    if (isRepeat)
        return;
    for (const auto &[ref, hotKey] : hotKeys_) {
        const auto locks =
            static_cast<quint16>(hotKey.lockStates.value(hotKey.lockStates.size() - 1));
        const quint16 modifiers = press.state & 0xff & ~locks;
        if (!hotKey.keys.contains(press.detail) || modifiers != hotKey.state)
            continue;
        heldKey_ = press.detail;
        HotKeyId id = hotKey.id;
        const auto handlers = handlers_;
        for (const auto &[handlerRef, handler] : handlers | std::views::reverse) {
            if (handler.callback(nullptr, &id, handler.userData) == noErr)
                break;
        }
        return;
    }
}

} // namespace quillmender
