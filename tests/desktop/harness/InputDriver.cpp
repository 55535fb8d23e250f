#include "desktop/harness/InputDriver.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/XcbConnection.h"

#include <xcb/xtest.h>

#include <X11/keysym.h>
#include <algorithm>

namespace quillmender::harness {

void InputDriver::press(xcb_keysym_t key) {
    send(XCB_KEY_PRESS, strokeOf(key).keyCode);
}

void InputDriver::release(xcb_keysym_t key) {
    send(XCB_KEY_RELEASE, strokeOf(key).keyCode);
}

void InputDriver::chord(const QList<xcb_keysym_t> &keys) {
    // No hand is faster, and toolkits that ask others about each key mix up what is.
    constexpr int pauseMs = 10;
    int delayMs = 0;
    for (const xcb_keysym_t key : keys) {
        send(XCB_KEY_PRESS, strokeOf(key).keyCode, {}, delayMs);
        delayMs = pauseMs;
    }
    std::for_each(keys.crbegin(), keys.crend(), [this](xcb_keysym_t key) { release(key); });
}

void InputDriver::type(const QString &text) {
    for (const QChar character : text) {
        const xcb_keysym_t key = character == u'\n' ? XK_Return : character.unicode();
        const Stroke stroke = strokeOf(key);
        if (stroke.shift)
            press(XK_Shift_L);
        send(XCB_KEY_PRESS, stroke.keyCode);
        send(XCB_KEY_RELEASE, stroke.keyCode);
        if (stroke.shift)
            release(XK_Shift_L);
    }
}

void InputDriver::movePointer(QPoint position) {
    send(XCB_MOTION_NOTIFY, 0, position);
}

void InputDriver::click(QPoint position, int button) {
    movePointer(position);
    send(XCB_BUTTON_PRESS, static_cast<quint8>(button));
    send(XCB_BUTTON_RELEASE, static_cast<quint8>(button));
}

void InputDriver::doubleClick(QPoint position) {
    click(position);
    // Toolkits take two presses of the same millisecond for a bouncing button.
    constexpr int pauseMs = 80;
    send(XCB_BUTTON_PRESS, 1, {}, pauseMs);
    send(XCB_BUTTON_RELEASE, 1);
}

InputDriver::Stroke InputDriver::strokeOf(xcb_keysym_t key) {
    // Asked again each time: the layout can change under the test.
    const xcb_setup_t *setup = xcb_get_setup(connection_.get());
    const auto count = static_cast<quint8>(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(connection_.get(), setup->min_keycode, count);
    const XcbPointer<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(connection_.get(), cookie, nullptr));
    if (!reply)
        throw HarnessError(QStringLiteral("the X server has no keyboard"));
    const xcb_keysym_t *keysyms = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (int level = 0; level < std::min<int>(2, reply->keysyms_per_keycode); ++level) {
        for (int code = 0; code < count; ++code) {
            if (keysyms[code * reply->keysyms_per_keycode + level] == key)
                return {static_cast<xcb_keycode_t>(setup->min_keycode + code), level == 1};
        }
    }
    throw HarnessError(QStringLiteral("no key for keysym 0x%1").arg(key, 0, 16));
}

void InputDriver::send(quint8 type, quint8 detail, QPoint position, int delayMs) {
    const bool moves = type == XCB_MOTION_NOTIFY;
    xcb_test_fake_input(connection_.get(), type, detail, static_cast<quint32>(delayMs),
                        moves ? connection_.root() : xcb_window_t{XCB_WINDOW_NONE},
                        static_cast<qint16>(position.x()), static_cast<qint16>(position.y()), 0);
    connection_.roundTrip();
}

} // namespace quillmender::harness
