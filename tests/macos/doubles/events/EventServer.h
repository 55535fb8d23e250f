#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <functional>

namespace quillmender::doubles {

/// The system's keyboard events while an instance lives.
class EventServer {
  public:
    EventServer();
    EventServer(const EventServer &) = delete;
    EventServer &operator=(const EventServer &) = delete;
    ~EventServer();

    static EventServer &current();

    bool createsSources = true;
    bool createsDown = true;
    bool createsUp = true;
    /// What a new event's flags are: the modifiers of the hot key, which the user still holds.
    uint64_t heldModifiers = kCGEventFlagMaskControl | kCGEventFlagMaskAlternate;
    /// What the application in front does about a posted event.
    std::function<void(CGKeyCode keyCode, bool keyDown)> onPost;
};

} // namespace quillmender::doubles
