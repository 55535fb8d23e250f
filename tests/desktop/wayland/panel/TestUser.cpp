#include "desktop/wayland/panel/TestUser.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"
#include "virtual-keyboard-unstable-v1-client-protocol.h"
#include "wlr-virtual-pointer-unstable-v1-client-protocol.h"

#include <QElapsedTimer>

#include <linux/input-event-codes.h>
#include <map>
#include <sys/mman.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::wayland {

template <> struct ProxyDeleter<zwp_virtual_keyboard_manager_v1> {
    void operator()(zwp_virtual_keyboard_manager_v1 *manager) const {
        zwp_virtual_keyboard_manager_v1_destroy(manager);
    }
};

template <> struct ProxyDeleter<zwlr_virtual_pointer_manager_v1> {
    void operator()(zwlr_virtual_pointer_manager_v1 *manager) const {
        zwlr_virtual_pointer_manager_v1_destroy(manager);
    }
};

template <> struct ProxyDeleter<zwp_virtual_keyboard_v1> {
    void operator()(zwp_virtual_keyboard_v1 *keyboard) const {
        zwp_virtual_keyboard_v1_destroy(keyboard);
    }
};

template <> struct ProxyDeleter<zwlr_virtual_pointer_v1> {
    void operator()(zwlr_virtual_pointer_v1 *pointer) const {
        zwlr_virtual_pointer_v1_destroy(pointer);
    }
};

} // namespace quillmender::wayland

namespace quillmender::test {

namespace {

constexpr std::chrono::milliseconds patience{5000};

quint32 evdevCodeOf(char letter) {
    static const std::map<char, quint32> codes{
        {'a', KEY_A}, {'b', KEY_B}, {'c', KEY_C},    {'d', KEY_D}, {'e', KEY_E}, {'f', KEY_F},
        {'g', KEY_G}, {'h', KEY_H}, {'i', KEY_I},    {'j', KEY_J}, {'k', KEY_K}, {'l', KEY_L},
        {'m', KEY_M}, {'n', KEY_N}, {'o', KEY_O},    {'p', KEY_P}, {'q', KEY_Q}, {'r', KEY_R},
        {'s', KEY_S}, {'t', KEY_T}, {'u', KEY_U},    {'v', KEY_V}, {'w', KEY_W}, {'x', KEY_X},
        {'y', KEY_Y}, {'z', KEY_Z}, {' ', KEY_SPACE}};
    return codes.at(letter);
}

quint32 now() {
    QElapsedTimer clock;
    clock.start();
    return static_cast<quint32>(clock.msecsSinceReference());
}

std::string keymap() {
    xkb_context *const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_rule_names names{};
    names.layout = "us";
    xkb_keymap *const map = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    char *const text = xkb_keymap_get_as_string(map, XKB_KEYMAP_FORMAT_TEXT_V1);
    std::string copy(text);
    free(text);
    xkb_keymap_unref(map);
    xkb_context_unref(context);
    return copy;
}

} // namespace

struct TestUser::Devices {
    wayland::Proxy<zwp_virtual_keyboard_manager_v1> keyboards;
    wayland::Proxy<zwlr_virtual_pointer_manager_v1> pointers;
    wayland::Proxy<zwp_virtual_keyboard_v1> keyboard;
    wayland::Proxy<zwlr_virtual_pointer_v1> pointer;
};

TestUser::TestUser(const QByteArray &display, QSize desktop)
    : connection_(wayland::WaylandConnection::open(display)),
      devices_(std::make_unique<Devices>()),
      desktop_(desktop) {
    devices_->keyboards = connection_->bind<zwp_virtual_keyboard_manager_v1>(
        zwp_virtual_keyboard_manager_v1_interface, 1);
    devices_->pointers = connection_->bind<zwlr_virtual_pointer_manager_v1>(
        zwlr_virtual_pointer_manager_v1_interface, 1);
    if (!devices_->keyboards || !devices_->pointers || !connection_->seat())
        throw harness::HarnessError(QStringLiteral("no virtual devices"));
    devices_->keyboard.reset(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(
        devices_->keyboards.get(), connection_->seat()));
    devices_->pointer.reset(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(
        devices_->pointers.get(), connection_->seat()));
    const std::string map = keymap();
    const int file = memfd_create("keymap", MFD_CLOEXEC);
    const auto size = map.size() + 1;
    if (file < 0 || ::write(file, map.c_str(), size) != ssize_t(size))
        throw harness::HarnessError(QStringLiteral("no keymap"));
    zwp_virtual_keyboard_v1_keymap(devices_->keyboard.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   quint32(size));
    settle();
    ::close(file);
}

TestUser::~TestUser() {
    devices_.reset();
}

void TestUser::settle() {
    if (!connection_->settle(patience))
        throw harness::HarnessError(QStringLiteral("the compositor takes no input"));
}

void TestUser::key(char letter, bool isDown) {
    zwp_virtual_keyboard_v1_key(devices_->keyboard.get(), now(), evdevCodeOf(letter),
                                isDown ? WL_KEYBOARD_KEY_STATE_PRESSED
                                       : WL_KEYBOARD_KEY_STATE_RELEASED);
    settle();
}

void TestUser::press(char letter) {
    key(letter, true);
}

void TestUser::release(char letter) {
    key(letter, false);
}

void TestUser::type(std::string_view text) {
    for (const char letter : text) {
        press(letter);
        release(letter);
    }
}

void TestUser::click(QPoint where) {
    auto *const pointer = devices_->pointer.get();
    zwlr_virtual_pointer_v1_motion_absolute(pointer, now(), quint32(where.x()), quint32(where.y()),
                                            quint32(desktop_.width()), quint32(desktop_.height()));
    zwlr_virtual_pointer_v1_frame(pointer);
    settle();
    for (const auto state : {WL_POINTER_BUTTON_STATE_PRESSED, WL_POINTER_BUTTON_STATE_RELEASED}) {
        zwlr_virtual_pointer_v1_button(pointer, now(), BTN_LEFT, state);
        zwlr_virtual_pointer_v1_frame(pointer);
        settle();
    }
}

quint32 toolkitCodeOf(char letter) {
    constexpr quint32 offset = 8;
    return evdevCodeOf(letter) + offset;
}

} // namespace quillmender::test
