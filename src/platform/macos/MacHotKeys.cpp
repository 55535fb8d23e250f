#include "platform/macos/MacHotKeys.h"

#include <Carbon/Carbon.h>

namespace quillmender {

namespace {

template <typename Ref> quint64 handleOf(Ref ref) {
    return reinterpret_cast<quintptr>(ref);
}

template <typename Ref> Ref refOf(quint64 handle) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it was made of this very pointer
    return reinterpret_cast<Ref>(static_cast<quintptr>(handle));
}

} // namespace

struct MacHotKeys::Listener {
    HotKeyEventHandler callback = nullptr;
    void *userData = nullptr;

    // The border's callback has plain pointers for the system's types, which makes it a function
    // of another type: it cannot be installed as it is.
    static OSStatus hear(EventHandlerCallRef nextHandler, EventRef event, void *listener) {
        const auto *own = static_cast<const Listener *>(listener);
        if (!own || !own->callback)
            return ::eventNotHandledErr;
        return own->callback(nextHandler, event, own->userData);
    }
};

MacHotKeys::MacHotKeys() = default;
MacHotKeys::~MacHotKeys() = default;

EventHandlerInstallation MacHotKeys::installEventHandler(HotKeyEventHandler callback,
                                                         EventTypeSpec type, void *userData) {
    auto listener = std::make_unique<Listener>();
    listener->callback = callback;
    listener->userData = userData;
    const ::EventTypeSpec systemType = {type.eventClass, type.eventKind};
    ::EventHandlerRef ref = nullptr;
    const OSStatus status = InstallEventHandler(GetApplicationEventTarget(), &Listener::hear, 1,
                                                &systemType, listener.get(), &ref);
    if (status != noErr)
        return {status, 0};
    const EventHandlerRef handler = handleOf(ref);
    listeners_[handler] = std::move(listener);
    return {status, handler};
}

qint32 MacHotKeys::removeEventHandler(EventHandlerRef handler) {
    const OSStatus status = RemoveEventHandler(refOf<::EventHandlerRef>(handler));
    const auto found = listeners_.find(handler);
    if (found == listeners_.end())
        return status;
    // A handler that the system would not remove may still be called: it must find nothing to do.
    if (status == noErr)
        listeners_.erase(found);
    else
        *found->second = {};
    return status;
}

HotKeyRegistration MacHotKeys::registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id,
                                              quint32 options) {
    EventHotKeyRef ref = nullptr;
    const OSStatus status = RegisterEventHotKey(keyCode, modifiers, {id.signature, id.id},
                                                GetApplicationEventTarget(), options, &ref);
    if (status != noErr)
        return {status, 0};
    return {status, handleOf(ref)};
}

qint32 MacHotKeys::unregisterHotKey(HotKeyRef hotKey) {
    return UnregisterEventHotKey(refOf<EventHotKeyRef>(hotKey));
}

} // namespace quillmender
