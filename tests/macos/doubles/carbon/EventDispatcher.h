#pragma once

#include <Carbon/Carbon.h>
#include <vector>

namespace quillmender::doubles {

/// The system's event manager while an instance lives.
class EventDispatcher {
  public:
    struct Handler {
        EventHandlerRef ref;
        EventHandlerUPP callback;
        std::vector<EventTypeSpec> types;
        void *userData;
    };
    struct HotKey {
        EventHotKeyRef ref;
        UInt32 keyCode;
        UInt32 modifiers;
    };

    EventDispatcher();
    EventDispatcher(const EventDispatcher &) = delete;
    EventDispatcher &operator=(const EventDispatcher &) = delete;
    ~EventDispatcher();

    static EventDispatcher &current();

    /// Presses a chord. The status of the handler that was called last, or eventNotHandledErr when
    /// nobody listens or the chord is not registered.
    OSStatus press(UInt32 keyCode, UInt32 modifiers) const;

    std::vector<Handler> handlers;
    std::vector<HotKey> hotKeys;
    OSStatus installStatus = noErr;
    OSStatus removeStatus = noErr;
    OSStatus registerStatus = noErr;
    OSStatus unregisterStatus = noErr;
};

} // namespace quillmender::doubles
