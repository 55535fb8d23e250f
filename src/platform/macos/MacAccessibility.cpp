#include "platform/macos/MacAccessibility.h"

#include "platform/macos/CFConversions.h"
#include "platform/macos/MacElement.h"

#include <ApplicationServices/ApplicationServices.h>
#include <unistd.h>

namespace quillmender {

namespace {

constexpr float messagingTimeoutSeconds = 1;

CFRef<CFTypeRef> copied(AXUIElementRef element, const char *attribute) {
    const CFRef<CFStringRef> name = toCFString(QLatin1String(attribute));
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

AccessibilityValue elementFrom(AXUIElementRef element) {
    const pid_t process = processOf(element);
    if (process == ::getpid())
        return std::monostate();
    return std::make_shared<const MacElement>(CFRef<AXUIElementRef>::retained(element),
                                              isSecureTextField(element), process);
}

bool isText(const QString &attribute) {
    return attribute == QLatin1String(attribute::selectedText) ||
           attribute == QLatin1String(attribute::value);
}

std::optional<TextRange> rangeFrom(CFTypeRef value) {
    if (CFGetTypeID(value) != AXValueGetTypeID())
        return std::nullopt;
    const auto *const packed = static_cast<AXValueRef>(value);
    CFRange range = {0, 0};
    if (AXValueGetType(packed) != kAXValueTypeCFRange ||
        !AXValueGetValue(packed, kAXValueTypeCFRange, &range))
        return std::nullopt;
    return TextRange{range.location, range.length};
}

AccessibilityValue valueFrom(CFTypeRef value) {
    if (!value)
        return std::monostate();
    if (const auto text = stringFrom(value))
        return *text;
    if (const auto range = rangeFrom(value))
        return *range;
    if (CFGetTypeID(value) == AXUIElementGetTypeID())
        return elementFrom(static_cast<AXUIElementRef>(value));
    return std::monostate();
}

CFRef<CFTypeRef> packed(const TextRange &range) {
    const CFRange systemRange = CFRangeMake(range.location, range.length);
    return CFRef<CFTypeRef>::adopted(AXValueCreate(kAXValueTypeCFRange, &systemRange));
}

AccessibilityError errorFrom(AXError error) {
    return static_cast<AccessibilityError>(error);
}

// What came of an order that was not answered in time. An application attends to what it is asked
// in its order: what it shows now, it shows after the order.
AccessibilityError outcome(AXUIElementRef element, const QString &wanted) {
    const CFRef<CFTypeRef> shown = copied(element, attribute::value);
    if (!shown)
        return AccessibilityError::cannotComplete;
    return stringFrom(shown.get()) == wanted ? AccessibilityError::success
                                             : AccessibilityError::failure;
}

} // namespace

MacAccessibility::MacAccessibility() {
    const auto systemWide = CFRef<AXUIElementRef>::adopted(AXUIElementCreateSystemWide());
    // Set for this element it is set for all. Refused, the system's own time-out remains.
    AXUIElementSetMessagingTimeout(systemWide.get(), messagingTimeoutSeconds);
}

bool MacAccessibility::isProcessTrusted() {
    return AXIsProcessTrusted() != 0;
}

bool MacAccessibility::isProcessTrustedWithPrompt() {
    const void *keys[] = {kAXTrustedCheckOptionPrompt};
    const void *values[] = {kCFBooleanTrue};
    const auto options = CFRef<CFDictionaryRef>::adopted(
        CFDictionaryCreate(kCFAllocatorDefault, keys, values, 1, &kCFTypeDictionaryKeyCallBacks,
                           &kCFTypeDictionaryValueCallBacks));
    // Without options the system answers the same question and shows no prompt.
    return AXIsProcessTrustedWithOptions(options.get()) != 0;
}

AccessibilityElementRef MacAccessibility::createSystemWide() {
    return std::make_shared<const MacElement>(
        CFRef<AXUIElementRef>::adopted(AXUIElementCreateSystemWide()));
}

QCoro::Task<AttributeResult> MacAccessibility::copyAttributeValue(AccessibilityElementRef element,
                                                                  QString attribute) {
    const MacElement *const target = MacElement::of(element);
    const CFRef<CFStringRef> name = toCFString(attribute);
    if (!target || !name)
        co_return AttributeResult{AccessibilityError::illegalArgument, {}};
    if (target->isSecure() && isText(attribute))
        co_return AttributeResult{AccessibilityError::noValue, {}};

    CFTypeRef copied = nullptr;
    const AXError error = AXUIElementCopyAttributeValue(target->get(), name.get(), &copied);
    const auto value = CFRef<CFTypeRef>::adopted(copied);
    if (error != kAXErrorSuccess)
        co_return AttributeResult{errorFrom(error), {}};
    co_return AttributeResult{AccessibilityError::success, valueFrom(value.get())};
}

QCoro::Task<AccessibilityError> MacAccessibility::setAttributeValue(AccessibilityElementRef element,
                                                                    QString attribute,
                                                                    AccessibilityValue value) {
    const MacElement *const target = MacElement::of(element);
    const CFRef<CFStringRef> name = toCFString(attribute);
    if (!target || !name)
        co_return AccessibilityError::illegalArgument;

    CFRef<CFTypeRef> systemValue;
    if (const auto *text = std::get_if<QString>(&value))
        systemValue = CFRef<CFTypeRef>::adopted(toCFString(*text).release());
    else if (const auto *range = std::get_if<TextRange>(&value))
        systemValue = packed(*range);
    else
        co_return AccessibilityError::illegalArgument;
    if (!systemValue)
        co_return AccessibilityError::failure;
    const AXError error =
        AXUIElementSetAttributeValue(target->get(), name.get(), systemValue.get());
    const auto *wanted = std::get_if<QString>(&value);
    if (error == kAXErrorCannotComplete && wanted && attribute == QLatin1String(attribute::value))
        co_return outcome(target->get(), *wanted);
    co_return errorFrom(error);
}

QCoro::Task<PasteTarget> MacAccessibility::selectBeforePaste(AccessibilityElementRef, TextRange) {
    co_return PasteTarget::selected;
}

} // namespace quillmender
