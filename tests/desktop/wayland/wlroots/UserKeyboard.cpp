#include "desktop/wayland/wlroots/UserKeyboard.h"

#include "desktop/harness/Waiter.h"
#include "platform/linux/wayland/keys/MemoryFile.h"

namespace quillmender::wlroots {

using namespace wayland;

UserKeyboard::UserKeyboard(const QByteArray &display, const QByteArray &layouts, quint32 active)
    : connection_(WaylandConnection::open(display)),
      keymap_(OwnKeymap::make(layouts)),
      active_(active) {
    manager_ = connection_->bind<zwp_virtual_keyboard_manager_v1>(
        zwp_virtual_keyboard_manager_v1_interface, 1);
    keyboard_.reset(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager_.get(),
                                                                            connection_->seat()));
    const MemoryFile file(keymap_->text());
    zwp_virtual_keyboard_v1_keymap(keyboard_.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1,
                                   file.descriptor(), file.size());
    clock_.start();
    sendModifiers();
    settle();
}

void UserKeyboard::down(xkb_keysym_t symbol) {
    change(symbol, true);
}

void UserKeyboard::up(xkb_keysym_t symbol) {
    change(symbol, false);
}

void UserKeyboard::tap(xkb_keysym_t symbol) {
    down(symbol);
    up(symbol);
}

void UserKeyboard::tapCode(quint32 code) {
    send(code, true);
    send(code, false);
    settle();
}

void UserKeyboard::change(xkb_keysym_t symbol, bool isDown) {
    const char *name = symbol == XKB_KEY_Control_L ? XKB_MOD_NAME_CTRL
                       : symbol == XKB_KEY_Alt_L   ? XKB_MOD_NAME_ALT
                       : symbol == XKB_KEY_Shift_L ? XKB_MOD_NAME_SHIFT
                                                   : nullptr;
    send(keymap_->keysOf(symbol).value(0), isDown);
    if (name)
        held_ = isDown ? held_ | keymap_->modifier(name) : held_ & ~keymap_->modifier(name);
    const char *lock = symbol == XKB_KEY_Caps_Lock  ? XKB_MOD_NAME_CAPS
                       : symbol == XKB_KEY_Num_Lock ? XKB_MOD_NAME_NUM
                                                    : nullptr;
    if (lock && isDown)
        locked_ ^= keymap_->modifier(lock);
    if (name || lock)
        sendModifiers();
    settle();
}

void UserKeyboard::send(quint32 code, bool isDown) {
    zwp_virtual_keyboard_v1_key(keyboard_.get(), static_cast<quint32>(clock_.elapsed()), code,
                                isDown ? WL_KEYBOARD_KEY_STATE_PRESSED
                                       : WL_KEYBOARD_KEY_STATE_RELEASED);
}

void UserKeyboard::sendModifiers() {
    zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), held_, 0, locked_, active_);
}

} // namespace quillmender::wlroots
