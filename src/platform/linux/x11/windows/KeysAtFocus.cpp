#include "platform/linux/x11/windows/KeysAtFocus.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/Xcb.h"

#include <QGuiApplication>

#include <utility>

namespace quillmender::x11 {

namespace {

constexpr quint32 bits = 8;

QSet<quint32> keysOf(const xcb_keymap_notify_event_t &event) {
    QSet<quint32> down;
    // The first eight codes are left out: no key has them.
    for (quint32 code = bits; code < (1 + std::size(event.keys)) * bits; ++code) {
        if (event.keys[code / bits - 1] & (1U << (code % bits)))
            down.insert(code);
    }
    return down;
}

} // namespace

KeysAtFocus::KeysAtFocus() {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

KeysAtFocus::~KeysAtFocus() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

void KeysAtFocus::watch(xcb_window_t window) {
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return;
    const auto attributes = replyTo(x11->connection(), xcb_get_window_attributes_reply,
                                    xcb_get_window_attributes(x11->connection(), window));
    if (!attributes)
        return;
    const quint32 events = attributes->your_event_mask | XCB_EVENT_MASK_KEYMAP_STATE;
    xcb_change_window_attributes(x11->connection(), window, XCB_CW_EVENT_MASK, &events);
}

QSet<quint32> KeysAtFocus::of(xcb_window_t window) const {
    return window == window_ ? down_ : QSet<quint32>();
}

bool KeysAtFocus::isDown(quint32 code) {
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return false;
    const auto keys =
        replyTo(x11->connection(), xcb_query_keymap_reply, xcb_query_keymap(x11->connection()));
    return keys && code / bits < std::size(keys->keys) &&
           keys->keys[code / bits] & (1U << (code % bits));
}

bool KeysAtFocus::nativeEventFilter(const QByteArray &, void *message, qintptr *) {
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const auto before = std::exchange(focused_, XCB_WINDOW_NONE);
    if (eventType(event) == XCB_FOCUS_IN) {
        focused_ = eventCast<xcb_focus_in_event_t>(event).event;
    } else if (eventType(event) == XCB_KEYMAP_NOTIFY && before != XCB_WINDOW_NONE) {
        window_ = before;
        down_ = keysOf(eventCast<xcb_keymap_notify_event_t>(event));
    }
    return false;
}

} // namespace quillmender::x11
