#include "doubles/carbon/EventDispatcher.h"

#include "doubles/CallLog.h"
#include "doubles/LiveObjects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace quillmender::doubles {

namespace {

EventDispatcher *currentDispatcher = nullptr;
char applicationTarget;
char pressedEvent;
char nextHandler;
uintptr_t lastRef = 0x1000;

template <typename Ref> Ref newRef() {
    lastRef += 16;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle that nobody follows
    return reinterpret_cast<Ref>(lastRef);
}

std::string fourCharacters(UInt32 code) {
    return {static_cast<char>(code >> 24), static_cast<char>(code >> 16),
            static_cast<char>(code >> 8), static_cast<char>(code)};
}

std::string target(EventTargetRef ref) {
    return ref == GetApplicationEventTarget() ? "application" : "another target";
}

} // namespace

EventDispatcher::EventDispatcher() {
    currentDispatcher = this;
}

EventDispatcher::~EventDispatcher() {
    currentDispatcher = nullptr;
}

EventDispatcher &EventDispatcher::current() {
    return *currentDispatcher;
}

OSStatus EventDispatcher::press(UInt32 keyCode, UInt32 modifiers) const {
    OSStatus status = eventNotHandledErr;
    if (std::ranges::none_of(hotKeys, [&](const HotKey &hotKey) {
            return hotKey.keyCode == keyCode && hotKey.modifiers == modifiers;
        }))
        return status;
    // A handler may remove itself.
    const std::vector<Handler> listening = handlers;
    for (const Handler &handler : listening) {
        if (std::ranges::any_of(handler.types, [](const EventTypeSpec &type) {
                return type.eventClass == kEventClassKeyboard &&
                       type.eventKind == kEventHotKeyPressed;
            }))
            status = handler.callback(reinterpret_cast<EventHandlerCallRef>(&nextHandler),
                                      reinterpret_cast<EventRef>(&pressedEvent), handler.userData);
    }
    return status;
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

EventTargetRef GetApplicationEventTarget() {
    return reinterpret_cast<EventTargetRef>(&applicationTarget);
}

OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                             ItemCount inNumTypes, const EventTypeSpec *inList, void *inUserData,
                             EventHandlerRef *outRef) {
    std::string call = "InstallEventHandler " + target(inTarget);
    for (ItemCount index = 0; index < inNumTypes; ++index)
        call += " " + fourCharacters(inList[index].eventClass) + "/" +
                std::to_string(inList[index].eventKind);
    CallLog::shared().add(call);

    EventDispatcher &dispatcher = EventDispatcher::current();
    if (dispatcher.installStatus != noErr)
        return dispatcher.installStatus;
    *outRef = newRef<EventHandlerRef>();
    dispatcher.handlers.push_back({*outRef, inHandler, {inList, inList + inNumTypes}, inUserData});
    LiveObjects::shared().gained("event handler");
    return noErr;
}

OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef) {
    CallLog::shared().add("RemoveEventHandler");
    EventDispatcher &dispatcher = EventDispatcher::current();
    const auto removed = std::erase_if(dispatcher.handlers,
                                       [&](const auto &one) { return one.ref == inHandlerRef; });
    EXPECT_EQ(removed, 1U) << "RemoveEventHandler was called with an unknown handler";
    LiveObjects::shared().gaveBack("event handler");
    return dispatcher.removeStatus;
}

OSStatus RegisterEventHotKey(UInt32 inHotKeyCode, UInt32 inHotKeyModifiers,
                             EventHotKeyID inHotKeyID, EventTargetRef inTarget,
                             OptionBits inOptions, EventHotKeyRef *outRef) {
    std::ostringstream call;
    call << "RegisterEventHotKey " << inHotKeyCode << " 0x" << std::hex << inHotKeyModifiers << " "
         << std::dec << fourCharacters(inHotKeyID.signature) << "/" << inHotKeyID.id << " "
         << target(inTarget) << " options " << inOptions;
    CallLog::shared().add(call.str());

    EventDispatcher &dispatcher = EventDispatcher::current();
    if (dispatcher.registerStatus != noErr)
        return dispatcher.registerStatus;
    *outRef = newRef<EventHotKeyRef>();
    dispatcher.hotKeys.push_back({*outRef, inHotKeyCode, inHotKeyModifiers});
    LiveObjects::shared().gained("hot key");
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef inHotKey) {
    CallLog::shared().add("UnregisterEventHotKey");
    EventDispatcher &dispatcher = EventDispatcher::current();
    const auto removed =
        std::erase_if(dispatcher.hotKeys, [&](const auto &one) { return one.ref == inHotKey; });
    EXPECT_EQ(removed, 1U) << "UnregisterEventHotKey was called with an unknown hot key";
    LiveObjects::shared().gaveBack("hot key");
    return dispatcher.unregisterStatus;
}
