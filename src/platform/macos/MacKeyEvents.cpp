#include "platform/macos/MacKeyEvents.h"

#include "platform/macos/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>

namespace quillmender {

namespace {

struct MacEventSource : KeyEventSource {
    explicit MacEventSource(CFRef<CGEventSourceRef> ref) : source(std::move(ref)) {}

    CFRef<CGEventSourceRef> source;
};

struct MacEvent : KeyEvent {
    explicit MacEvent(CFRef<CGEventRef> ref) : event(std::move(ref)) {}

    CFRef<CGEventRef> event;
};

} // namespace

QCoro::Task<ChordReadiness> MacKeyEvents::prepareChord(RunningApplicationRef, Chord,
                                                       ChordContextRef) {
    co_return ChordReadiness::ready;
}

KeyEventSourceRef MacKeyEvents::createSource(qint32 state) {
    auto source = CFRef<CGEventSourceRef>::adopted(
        CGEventSourceCreate(static_cast<CGEventSourceStateID>(state)));
    if (!source)
        return nullptr;
    return std::make_shared<MacEventSource>(std::move(source));
}

KeyEventRef MacKeyEvents::createKeyboardEvent(const KeyEventSourceRef &source, quint16 keyCode,
                                              bool keyDown) {
    const auto *own = dynamic_cast<const MacEventSource *>(source.get());
    if (!own)
        return nullptr;
    auto event =
        CFRef<CGEventRef>::adopted(CGEventCreateKeyboardEvent(own->source.get(), keyCode, keyDown));
    if (!event)
        return nullptr;
    return std::make_shared<MacEvent>(std::move(event));
}

void MacKeyEvents::setFlags(const KeyEventRef &event, quint64 flags) {
    if (const auto *own = dynamic_cast<const MacEvent *>(event.get()))
        CGEventSetFlags(own->event.get(), flags);
}

bool MacKeyEvents::post(quint32 tap, const KeyEventRef &event) {
    if (const auto *own = dynamic_cast<const MacEvent *>(event.get()))
        CGEventPost(static_cast<CGEventTapLocation>(tap), own->event.get());
    return true;
}

} // namespace quillmender
