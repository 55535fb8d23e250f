#include "doubles/events/EventServer.h"

#include "doubles/CallLog.h"
#include "doubles/cf/Object.h"
#include "doubles/cf/TypeIds.h"

#include <sstream>

namespace quillmender::doubles {

namespace {

EventServer *currentServer = nullptr;

class EventSource : public Object {
  public:
    EventSource() : Object("CGEventSource", eventSourceTypeId) {}
};

class Event : public Object {
  public:
    Event(CGKeyCode keyCode, bool keyDown)
        : Object("CGEvent", eventTypeId),
          keyCode(keyCode),
          keyDown(keyDown),
          flags(EventServer::current().heldModifiers) {}

    std::string description() const override {
        return std::to_string(keyCode) + (keyDown ? " down" : " up");
    }

    CGKeyCode keyCode;
    bool keyDown;
    mutable uint64_t flags;
};

std::string hexadecimal(uint64_t value) {
    std::ostringstream text;
    text << "0x" << std::hex << value;
    return text.str();
}

} // namespace

EventServer::EventServer() {
    currentServer = this;
}

EventServer::~EventServer() {
    currentServer = nullptr;
}

EventServer &EventServer::current() {
    return *currentServer;
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID stateID) {
    CallLog::shared().add("CGEventSourceCreate " + std::to_string(stateID));
    return EventServer::current().createsSources ? refOf<CGEventSourceRef>(new EventSource)
                                                 : nullptr;
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode virtualKey, bool keyDown) {
    checked<EventSource>(source, "CGEventCreateKeyboardEvent");
    CallLog::shared().add("CGEventCreateKeyboardEvent " + std::to_string(virtualKey) +
                          (keyDown ? " down" : " up"));
    const EventServer &server = EventServer::current();
    if (keyDown ? !server.createsDown : !server.createsUp)
        return nullptr;
    return refOf<CGEventRef>(new Event(virtualKey, keyDown));
}

void CGEventSetFlags(CGEventRef event, CGEventFlags flags) {
    const auto *object = checked<Event>(event, "CGEventSetFlags");
    CallLog::shared().add("CGEventSetFlags " + describe(event) + " " + hexadecimal(flags));
    if (object)
        object->flags = flags;
}

void CGEventPost(CGEventTapLocation tap, CGEventRef event) {
    const auto *object = checked<Event>(event, "CGEventPost");
    if (!object)
        return;
    CallLog::shared().add("CGEventPost " + std::to_string(tap) + " " + describe(event) + " " +
                          hexadecimal(object->flags));
    if (EventServer::current().onPost)
        EventServer::current().onPost(object->keyCode, object->keyDown);
}
