#include "platform/macos/MacHotKey.h"

#include <vector>

namespace quillmender {

namespace {

constexpr OptionBits noOptions = 0;

UInt32 carbonModifiers(Qt::KeyboardModifiers modifiers) {
    UInt32 carbon = 0;
    if (modifiers.testFlag(Qt::ControlModifier))
        carbon |= controlKey;
    if (modifiers.testFlag(Qt::AltModifier))
        carbon |= optionKey;
    if (modifiers.testFlag(Qt::ShiftModifier))
        carbon |= shiftKey;
    if (modifiers.testFlag(Qt::MetaModifier))
        carbon |= cmdKey;
    return carbon;
}

} // namespace

// What the system is given to call back with.
struct MacHotKey::Listener {
    MacHotKey *hotKey = nullptr;
};

MacHotKey::MacHotKey(QKeyCombination keys, std::function<void()> handler)
    : HeldHotKey(std::move(handler)),
      asked_(keys),
      listener_(std::make_unique<Listener>(Listener{this})) {
    constexpr EventTypeSpec pressed = {kEventClassKeyboard, kEventHotKeyPressed};
    EventHandlerRef handlerRef = nullptr;
    if (InstallEventHandler(GetApplicationEventTarget(), &MacHotKey::hotKeyEventHandler, 1,
                            &pressed, listener_.get(), &handlerRef) != noErr)
        return;
    eventHandlerRef_ = handlerRef;
    EventHotKeyRef hotKeyRef = nullptr;
    const OSStatus status = RegisterEventHotKey(
        kVK_Space, carbonModifiers(keys.keyboardModifiers()), {fourCharCode(u"QLMD"), 1},
        GetApplicationEventTarget(), noOptions, &hotKeyRef);
    if (status == noErr)
        hotKeyRef_ = hotKeyRef;
}

MacHotKey::~MacHotKey() {
    if (hotKeyRef_)
        UnregisterEventHotKey(hotKeyRef_);
    if (!eventHandlerRef_ || RemoveEventHandler(eventHandlerRef_) == noErr)
        return;
    // A handler that the system would not remove may still be called: it must find nothing to do.
    static std::vector<std::unique_ptr<Listener>> left;
    listener_->hotKey = nullptr;
    left.push_back(std::move(listener_));
}

std::optional<QKeyCombination> MacHotKey::keys() const {
    return hotKeyRef_ ? std::optional(asked_) : std::nullopt;
}

OSStatus MacHotKey::hotKeyEventHandler(EventHandlerCallRef, EventRef, void *userData) {
    const auto *listener = static_cast<const Listener *>(userData);
    if (!listener || !listener->hotKey)
        return eventNotHandledErr;
    listener->hotKey->press();
    return noErr;
}

quint32 MacHotKey::fourCharCode(QStringView text) {
    quint32 code = 0;
    for (const char byte : text.toUtf8())
        code = (code << 8) | static_cast<quint8>(byte);
    return code;
}

} // namespace quillmender
