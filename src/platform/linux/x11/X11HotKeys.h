#pragma once

#include "platform/HotKeys.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <xcb/xcb.h>

#include <map>
#include <xkbcommon/xkbcommon.h>

namespace quillmender {

class X11Connection;
class X11Keymap;

/// Hot keys as passive grabs on the root window, in every state of Caps, Num and Scroll Lock. The
/// keyboard stays grabbed until the key is released, so that nothing of it reaches a window.
class X11HotKeys : public QObject, public HotKeys {
    Q_OBJECT

  public:
    X11HotKeys(X11Connection &connection, X11Keymap &keymap);
    ~X11HotKeys() override;

    EventHandlerInstallation installEventHandler(HotKeyEventHandler callback, EventTypeSpec type,
                                                 void *userData) override;
    qint32 removeEventHandler(EventHandlerRef handler) override;

    /// Known key codes: 8, 9 and 49. The status is not 0 when another client has the key; the
    /// registration stands all the same, and takes the key when it is seen to be free.
    HotKeyRegistration registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id,
                                      quint32 options) override;
    qint32 unregisterHotKey(HotKeyRef hotKey) override;

  private:
    struct Handler {
        HotKeyEventHandler callback;
        void *userData;
    };
    struct HotKey {
        xkb_keysym_t symbol = XKB_KEY_NoSymbol;
        quint32 modifiers = 0;
        HotKeyId id;
        QList<xcb_keycode_t> keys;
        quint16 state = 0;
        QList<quint16> lockStates;

        bool isGrabbed() const { return !keys.isEmpty(); }
    };

    void handleEvent(const xcb_generic_event_t *event);
    void handlePress(const xcb_key_press_event_t &press);
    void handleKeymapChange();
    void tryAgain();
    bool grab(HotKey &hotKey);
    void ungrab(HotKey &hotKey);
    quint16 stateOf(quint32 modifiers);
    QList<quint16> lockStates();

    X11Connection &connection_;
    X11Keymap &keymap_;
    std::map<EventHandlerRef, Handler> handlers_;
    std::map<HotKeyRef, HotKey> hotKeys_;
    quint64 lastRef_ = 0;
    xcb_keycode_t heldKey_ = 0;
    xcb_timestamp_t lastPress_ = XCB_CURRENT_TIME;
};

} // namespace quillmender
