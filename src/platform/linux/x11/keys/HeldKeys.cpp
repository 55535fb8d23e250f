#include "platform/linux/x11/keys/HeldKeys.h"

#include "platform/SignalWait.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/keys/X11Keymap.h"

#include <QDeadlineTimer>
#include <xcb/xtest.h>

namespace quillmender::x11 {

using namespace std::chrono_literals;

QList<xcb_keycode_t> HeldKeys::now() const {
    const auto reply =
        replyTo(connection_.xcb(), xcb_query_keymap_reply, xcb_query_keymap(connection_.xcb()));
    QList<xcb_keycode_t> held;
    if (!reply)
        return held;
    // Space comes last: while it is down, its grab keeps everything else away from applications.
    for (const xcb_keycode_t key : keymap_.modifierKeys() + keymap_.keysOf(XKB_KEY_space)) {
        if ((reply->keys[key / 8] >> (key % 8) & 1) != 0)
            held.append(key);
    }
    return held;
}

QCoro::Task<bool> HeldKeys::release() {
    bool isReleased = co_await waitUntilUp(300ms);
    if (!isReleased) {
        for (const xcb_keycode_t key : now())
            xcb_test_fake_input(connection_.xcb(), XCB_KEY_RELEASE, key, XCB_CURRENT_TIME,
                                XCB_WINDOW_NONE, 0, 0, 0);
        // A keyboard that keeps its keys down all the same gets as long again for the user's hand.
        isReleased = co_await waitUntilUp(300ms);
    }
    xcb_ungrab_keyboard(connection_.xcb(), XCB_CURRENT_TIME);
    xcb_flush(connection_.xcb());
    co_return isReleased;
}

QCoro::Task<bool> HeldKeys::waitUntilUp(std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    while (!now().isEmpty()) {
        if (deadline.hasExpired())
            co_return false;
        co_await SignalWait(&connection_, &X11Connection::lost, 5ms);
    }
    co_return true;
}

} // namespace quillmender::x11
