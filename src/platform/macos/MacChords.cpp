#include "platform/macos/MacChords.h"

#include "platform/macos/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>

namespace quillmender {

namespace {

using OwnedEvent = CFRef<CGEventRef>;

ChordResult unavailable(const QString &reason) {
    return {ChordResult::Outcome::unavailable, reason};
}

ChordResult postCommandKeystroke(CGKeyCode keyCode) {
    const auto source = CFRef<CGEventSourceRef>::adopted(
        CGEventSourceCreate(kCGEventSourceStateCombinedSessionState));
    if (!source)
        return unavailable(QStringLiteral("no source of events can be created"));
    const OwnedEvent down =
        OwnedEvent::adopted(CGEventCreateKeyboardEvent(source.get(), keyCode, true));
    const OwnedEvent up =
        OwnedEvent::adopted(CGEventCreateKeyboardEvent(source.get(), keyCode, false));
    if (!down || !up)
        return unavailable(QStringLiteral("no keyboard event can be created"));
    CGEventSetFlags(down.get(), kCGEventFlagMaskCommand);
    CGEventSetFlags(up.get(), kCGEventFlagMaskCommand);
    CGEventPost(kCGHIDEventTap, down.get());
    CGEventPost(kCGHIDEventTap, up.get());
    return {ChordResult::Outcome::typed};
}

} // namespace

QCoro::Task<ChordResult> MacChords::type(Chord chord, ChordTarget) {
    co_return postCommandKeystroke(chord == Chord::copy ? kVK_ANSI_C : kVK_ANSI_V);
}

} // namespace quillmender
