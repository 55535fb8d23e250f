#include "desktop/harness/wayland/KeymapUser.h"

#include "desktop/harness/HarnessError.h"

#include <algorithm>
#include <chrono>
#include <linux/input-event-codes.h>
#include <thread>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace quillmender::harness {

namespace {

// No hand is faster, and toolkits that ask others about each key mix up what is.
constexpr std::chrono::milliseconds handPause{10};
// Toolkits take two presses of the same moment for a bouncing button.
constexpr std::chrono::milliseconds doubleClickPause{80};

constexpr quint32 evdevOffset = 8;

quint32 buttonCode(int button) {
    switch (button) {
    case 2:
        return BTN_MIDDLE;
    case 3:
        return BTN_RIGHT;
    default:
        return BTN_LEFT;
    }
}

} // namespace

void KeymapUser::press(Keysym key) {
    pressKey(strokeOf(key).keyCode);
}

void KeymapUser::release(Keysym key) {
    releaseKey(strokeOf(key).keyCode);
}

void KeymapUser::chord(const QList<Keysym> &keys) {
    for (const Keysym key : keys) {
        press(key);
        std::this_thread::sleep_for(handPause);
    }
    std::for_each(keys.crbegin(), keys.crend(), [this](Keysym key) { release(key); });
}

void KeymapUser::type(const QString &text) {
    for (const char32_t character : text.toUcs4()) {
        const Keysym key =
            character == U'\n' ? XKB_KEY_Return : xkb_utf32_to_keysym(uint32_t{character});
        const Keymap::Stroke stroke = strokeOf(key);
        QList<Keysym> held;
        if ((stroke.level & 1U) != 0)
            held.append(XKB_KEY_Shift_L);
        if ((stroke.level & 2U) != 0)
            held.append(XKB_KEY_ISO_Level3_Shift);
        for (const Keysym modifier : held)
            press(modifier);
        pressKey(stroke.keyCode);
        releaseKey(stroke.keyCode);
        for (const Keysym modifier : held)
            release(modifier);
    }
}

void KeymapUser::click(QPoint position, int button) {
    movePointer(position);
    // A client hears of the pointer's coming before it can hear of a button.
    std::this_thread::sleep_for(handPause);
    sendButton(buttonCode(button), true);
    std::this_thread::sleep_for(handPause);
    sendButton(buttonCode(button), false);
}

void KeymapUser::doubleClick(QPoint position) {
    click(position);
    std::this_thread::sleep_for(doubleClickPause);
    sendButton(BTN_LEFT, true);
    sendButton(BTN_LEFT, false);
}

Keymap::Stroke KeymapUser::strokeOf(Keysym key) const {
    const auto stroke = keymap_.find(key, keymap_.layout());
    if (!stroke)
        throw HarnessError(QStringLiteral("no key for keysym 0x%1").arg(key, 0, 16));
    return *stroke;
}

void KeymapUser::pressKey(xkb_keycode_t key) {
    keymap_.press(key);
    sendKey(key - evdevOffset, true);
}

void KeymapUser::releaseKey(xkb_keycode_t key) {
    keymap_.release(key);
    sendKey(key - evdevOffset, false);
}

} // namespace quillmender::harness
