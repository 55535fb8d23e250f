#include "desktop/harness/wayland/WaylandUser.h"

#include "desktop/harness/HarnessError.h"
#include "virtual-keyboard-unstable-v1-client-protocol.h"
#include "wlr-virtual-pointer-unstable-v1-client-protocol.h"

#include <algorithm>
#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace quillmender::harness {

namespace {

// No hand is faster, and toolkits that ask others about each key mix up what is.
constexpr std::chrono::milliseconds handPause{10};
// Toolkits take two presses of the same moment for a bouncing button.
constexpr std::chrono::milliseconds doubleClickPause{80};

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

WaylandUser::WaylandUser(const QString &socketPath, QSize screen, const QString &layouts)
    : client_(socketPath),
      screen_(screen),
      keymap_(layouts),
      keyboards_(client_.bind<zwp_virtual_keyboard_manager_v1>(
          zwp_virtual_keyboard_manager_v1_interface, 1)),
      keyboard_(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboards_.get(),
                                                                        client_.seat())),
      pointers_(client_.bind<zwlr_virtual_pointer_manager_v1>(
          zwlr_virtual_pointer_manager_v1_interface, 1)),
      pointer_(
          zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers_.get(), client_.seat())) {
    since_.start();
    const QByteArray text = keymap_.text();
    const int file = ::memfd_create("keymap", MFD_CLOEXEC);
    const auto size = static_cast<size_t>(text.size()) + 1;
    if (::write(file, text.constData(), size) != static_cast<ssize_t>(size))
        throw HarnessError(QStringLiteral("no memory for a keymap"));
    zwp_virtual_keyboard_v1_keymap(keyboard_.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   static_cast<quint32>(size));
    ::close(file);
    client_.roundTrip();
}

void WaylandUser::press(Keysym key) {
    pressKey(strokeOf(key).keyCode);
}

void WaylandUser::release(Keysym key) {
    releaseKey(strokeOf(key).keyCode);
}

void WaylandUser::chord(const QList<Keysym> &keys) {
    for (const Keysym key : keys) {
        press(key);
        std::this_thread::sleep_for(handPause);
    }
    std::for_each(keys.crbegin(), keys.crend(), [this](Keysym key) { release(key); });
}

void WaylandUser::type(const QString &text) {
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

void WaylandUser::movePointer(QPoint position) {
    zwlr_virtual_pointer_v1_motion_absolute(
        pointer_.get(), now(), static_cast<quint32>(std::max(0, position.x())),
        static_cast<quint32>(std::max(0, position.y())), static_cast<quint32>(screen_.width()),
        static_cast<quint32>(screen_.height()));
    zwlr_virtual_pointer_v1_frame(pointer_.get());
    client_.roundTrip();
}

void WaylandUser::click(QPoint position, int button) {
    movePointer(position);
    // A client hears of the pointer's coming before it can hear of a button.
    std::this_thread::sleep_for(handPause);
    sendButton(button, true);
    std::this_thread::sleep_for(handPause);
    sendButton(button, false);
}

void WaylandUser::doubleClick(QPoint position) {
    click(position);
    std::this_thread::sleep_for(doubleClickPause);
    sendButton(1, true);
    sendButton(1, false);
}

void WaylandUser::useLayout(quint32 layout) {
    keymap_.lockLayout(layout);
    const Keymap::Modifiers state = keymap_.modifiers();
    zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), state.depressed, state.latched, state.locked,
                                      state.group);
    client_.roundTrip();
}

Keymap::Stroke WaylandUser::strokeOf(Keysym key) const {
    const auto stroke = keymap_.find(key, keymap_.layout());
    if (!stroke)
        throw HarnessError(QStringLiteral("no key for keysym 0x%1").arg(key, 0, 16));
    return *stroke;
}

void WaylandUser::pressKey(xkb_keycode_t key) {
    keymap_.press(key);
    sendKey(key, true);
}

void WaylandUser::releaseKey(xkb_keycode_t key) {
    keymap_.release(key);
    sendKey(key, false);
}

void WaylandUser::sendKey(xkb_keycode_t key, bool isDown) {
    constexpr quint32 evdevOffset = 8;
    zwp_virtual_keyboard_v1_key(keyboard_.get(), now(), key - evdevOffset, isDown ? 1 : 0);
    // What the keys do to the modifiers is for the client to say.
    const Keymap::Modifiers state = keymap_.modifiers();
    zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), state.depressed, state.latched, state.locked,
                                      state.group);
    client_.roundTrip();
}

void WaylandUser::sendButton(int button, bool isDown) {
    zwlr_virtual_pointer_v1_button(pointer_.get(), now(), buttonCode(button), isDown ? 1 : 0);
    zwlr_virtual_pointer_v1_frame(pointer_.get());
    client_.roundTrip();
}

} // namespace quillmender::harness
