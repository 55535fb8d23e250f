#include "platform/macos/MacFocusedText.h"

#include "platform/BlankText.h"
#include "platform/CharacterBoundary.h"
#include "platform/macos/CFConversions.h"
#include "platform/macos/MacElement.h"

#include <ApplicationServices/ApplicationServices.h>
#include <unistd.h>

namespace quillmender {

namespace {

constexpr float messagingTimeoutSeconds = 1;

constexpr auto focusedElement = "AXFocusedUIElement"; // of the system-wide element
constexpr auto selectedText = "AXSelectedText";
constexpr auto valueAttribute = "AXValue";
constexpr auto selectedTextRange = "AXSelectedTextRange";

CFRef<CFTypeRef> copied(AXUIElementRef element, const char *attribute) {
    const CFRef<CFStringRef> name = toCFString(QLatin1String(attribute));
    if (!name)
        return {};
    CFTypeRef value = nullptr;
    const AXError error = AXUIElementCopyAttributeValue(element, name.get(), &value);
    auto owned = CFRef<CFTypeRef>::adopted(value);
    return error == kAXErrorSuccess ? std::move(owned) : CFRef<CFTypeRef>();
}

// 0 when the system does not say.
pid_t processOf(AXUIElementRef element) {
    pid_t process = 0;
    return AXUIElementGetPid(element, &process) == kAXErrorSuccess ? process : 0;
}

// Asked when the element is found and not at each read, so that reading a text stays one call.
bool isSecureTextField(AXUIElementRef element) {
    const CFRef<CFTypeRef> subrole = copied(element, "AXSubrole");
    return subrole && stringFrom(subrole.get()) == QLatin1String("AXSecureTextField");
}

std::optional<QString> textOf(const MacElement &element, const char *attribute) {
    const CFRef<CFTypeRef> value = copied(element.get(), attribute);
    return value ? stringFrom(value.get()) : std::nullopt;
}

std::optional<TextRange> rangeOf(const MacElement &element) {
    const CFRef<CFTypeRef> value = copied(element.get(), selectedTextRange);
    if (!value || CFGetTypeID(value.get()) != AXValueGetTypeID())
        return std::nullopt;
    const auto *const packed = static_cast<AXValueRef>(value.get());
    CFRange range = {0, 0};
    if (AXValueGetType(packed) != kAXValueTypeCFRange ||
        !AXValueGetValue(packed, kAXValueTypeCFRange, &range))
        return std::nullopt;
    return TextRange{range.location, range.length};
}

AXError write(const MacElement &element, const char *attribute, CFTypeRef value) {
    const CFRef<CFStringRef> name = toCFString(QLatin1String(attribute));
    return name ? AXUIElementSetAttributeValue(element.get(), name.get(), value) : kAXErrorFailure;
}

Replacement refused(const char *reason) {
    return {Replacement::Outcome::refused, QLatin1String(reason)};
}

// What came of an order that was not answered in time. An application attends to what it is asked
// in its order: what it shows now, it shows after the order.
Replacement outcome(const MacElement &element, const QString &wanted) {
    const std::optional<QString> shown = textOf(element, valueAttribute);
    if (!shown)
        return {Replacement::Outcome::uncertain,
                QStringLiteral("the application did not answer an order in time")};
    if (shown == wanted)
        return {Replacement::Outcome::done};
    return refused("the application did not carry the order out");
}

Replacement writeValue(const MacElement &element, const QString &text) {
    const CFRef<CFStringRef> value = toCFString(text);
    if (!value)
        return refused("the system's form of the text cannot be made");
    const AXError error = write(element, valueAttribute, value.get());
    if (error == kAXErrorSuccess)
        return {Replacement::Outcome::done};
    if (error == kAXErrorCannotComplete)
        return outcome(element, text);
    return {Replacement::Outcome::refused,
            QStringLiteral("the application refused with error %1").arg(error)};
}

// What comes of it is nobody's concern: the text is written.
void selectIn(const MacElement &element, TextRange range) {
    const CFRange systemRange = CFRangeMake(range.location, range.length);
    const auto packed =
        CFRef<AXValueRef>::adopted(AXValueCreate(kAXValueTypeCFRange, &systemRange));
    if (packed)
        write(element, selectedTextRange, packed.get());
}

void readTexts(FocusReading &reading, const MacElement &element) {
    reading.selectedText = textOf(element, selectedText);
    if (!isBlank(reading.selectedText)) {
        reading.selectedRange = rangeOf(element);
        return;
    }
    reading.selectedText.reset();
    reading.value = textOf(element, valueAttribute);
    if (isBlank(reading.value))
        reading.value.reset();
}

} // namespace

MacFocusedText::MacFocusedText() {
    const auto systemWide = CFRef<AXUIElementRef>::adopted(AXUIElementCreateSystemWide());
    // Set for this element it is set for all. Refused, the system's own time-out remains.
    AXUIElementSetMessagingTimeout(systemWide.get(), messagingTimeoutSeconds);
}

QCoro::Task<FocusReading> MacFocusedText::read(RunningApplicationRef application) {
    FocusReading reading;
    reading.application = application;
    if (!application)
        co_return reading;
    const auto systemWide = CFRef<AXUIElementRef>::adopted(AXUIElementCreateSystemWide());
    const CFRef<CFTypeRef> focused = copied(systemWide.get(), focusedElement);
    if (!focused || CFGetTypeID(focused.get()) != AXUIElementGetTypeID())
        co_return reading;
    const auto *const element = static_cast<AXUIElementRef>(focused.get());
    const pid_t process = processOf(element);
    if (process == ::getpid())
        co_return reading;
    const qint64 asked = application->processId();
    if (process != 0 && asked != 0 && process != asked) {
        reading.isElsewhere = true;
        co_return reading;
    }
    const auto found = std::make_shared<const MacElement>(CFRef<AXUIElementRef>::retained(element),
                                                          isSecureTextField(element));
    reading.element = found;
    if (!found->isSecure())
        readTexts(reading, *found);
    co_return reading;
}

QCoro::Task<std::optional<TextRange>> MacFocusedText::selectedRange(FocusedElementRef element) {
    const MacElement *const own = MacElement::of(element);
    if (!own)
        co_return std::nullopt;
    co_return rangeOf(*own);
}

QCoro::Task<Replacement> MacFocusedText::replace(FocusedElementRef element, TextRange range,
                                                 QString text) {
    const MacElement *const own = MacElement::of(element);
    if (!own || own->isSecure())
        co_return refused("not a text to edit");
    std::optional<QString> value = textOf(*own, valueAttribute);
    if (!value)
        co_return refused("the text cannot be read");
    if (!fallsOnCharacterBoundaries(*value, range))
        co_return refused("the range splits a character or lies outside the text");
    value->replace(range.location, range.length, text);
    const Replacement written = writeValue(*own, *value);
    if (written.outcome == Replacement::Outcome::done)
        selectIn(*own, {range.location, text.size()});
    co_return written;
}

QCoro::Task<PasteTarget> MacFocusedText::select(FocusedElementRef, TextRange) {
    co_return PasteTarget::selected;
}

} // namespace quillmender
