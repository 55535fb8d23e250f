#include "platform/linux/wayland/keys/VirtualKeyboard.h"

#include "platform/linux/wayland/WaylandConnection.h"

namespace quillmender::wayland {

using namespace std::chrono_literals;

namespace {

TypedOutcome unavailable(const QString &reason) {
    return {.isUnavailable = true, .reason = reason};
}

} // namespace

std::unique_ptr<VirtualKeyboard> VirtualKeyboard::create(WaylandConnection &connection) {
    const auto keymap = OwnKeymap::make("us");
    auto manager = connection.bind<zwp_virtual_keyboard_manager_v1>(
        zwp_virtual_keyboard_manager_v1_interface, 1);
    if (!keymap || !manager)
        return nullptr;
    std::unique_ptr<VirtualKeyboard> keyboard(
        new VirtualKeyboard(connection, std::move(manager), *keymap));
    return keyboard->keymap_.descriptor() < 0 ? nullptr : std::move(keyboard);
}

VirtualKeyboard::VirtualKeyboard(WaylandConnection &connection,
                                 Proxy<zwp_virtual_keyboard_manager_v1> manager,
                                 const OwnKeymap &keymap)
    : connection_(&connection),
      manager_(std::move(manager)),
      keymap_(keymap.text()),
      controlC_(strokeOf(TypedKeys::controlC, keymap)),
      controlV_(strokeOf(TypedKeys::controlV, keymap)),
      shiftInsert_(strokeOf(TypedKeys::shiftInsert, keymap)) {
    clock_.start();
}

VirtualKeyboard::Stroke VirtualKeyboard::strokeOf(TypedKeys keys, const OwnKeymap &keymap) {
    const bool isShift = keys == TypedKeys::shiftInsert;
    const xkb_keysym_t letter = keys == TypedKeys::controlC ? XKB_KEY_c : XKB_KEY_v;
    return {.modifierKey = keymap.keysOf(isShift ? XKB_KEY_Shift_L : XKB_KEY_Control_L).value(0),
            .modifier = keymap.modifier(isShift ? XKB_MOD_NAME_SHIFT : XKB_MOD_NAME_CTRL),
            .key = keymap.keysOf(isShift ? XKB_KEY_Insert : letter).value(0)};
}

QCoro::Task<TypedOutcome> VirtualKeyboard::type(TypedKeys keys, std::function<bool()> isStillMeant,
                                                std::function<void()> beforeLast) {
    if (!connection_ || connection_->isLost() || !connection_->seat())
        co_return unavailable(QStringLiteral("there is no compositor, or it has no seat"));
    if (!isStillMeant())
        co_return TypedOutcome{.reason = QStringLiteral("the keys are not meant any more")};
    press(keys == TypedKeys::controlC   ? controlC_
          : keys == TypedKeys::controlV ? controlV_
                                        : shiftInsert_,
          beforeLast);
    // One that stalls gets to them all the same when it goes on. This object may go meanwhile.
    const QPointer connection = connection_;
    co_await connection->roundTrip(1s);
    if (!connection || connection->isLost())
        co_return unavailable(QStringLiteral("the compositor does not take the keys"));
    co_return TypedOutcome{.isTyped = true};
}

void VirtualKeyboard::press(const Stroke &stroke, const std::function<void()> &beforeLast) {
    const Proxy<zwp_virtual_keyboard_v1> keyboard(
        zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager_.get(),
                                                                connection_->seat()));
    zwp_virtual_keyboard_v1_keymap(keyboard.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1,
                                   keymap_.descriptor(), keymap_.size());
    const auto send = [&](quint32 key, wl_keyboard_key_state state, quint32 modifiers) {
        const auto now = static_cast<quint32>(clock_.elapsed());
        zwp_virtual_keyboard_v1_key(keyboard.get(), now, key, state);
        // Nobody but us says what is held on this keyboard.
        zwp_virtual_keyboard_v1_modifiers(keyboard.get(), modifiers, 0, 0, 0);
    };
    send(stroke.modifierKey, WL_KEYBOARD_KEY_STATE_PRESSED, stroke.modifier);
    beforeLast();
    send(stroke.key, WL_KEYBOARD_KEY_STATE_PRESSED, stroke.modifier);
    send(stroke.key, WL_KEYBOARD_KEY_STATE_RELEASED, stroke.modifier);
    send(stroke.modifierKey, WL_KEYBOARD_KEY_STATE_RELEASED, 0);
    connection_->flush();
}

} // namespace quillmender::wayland
