#include "desktop/atspi/AtspiTest.h"

#include "desktop/harness/ClipboardProbe.h"

#include <QCoroTask>

namespace quillmender {

qint64 DesktopFrontmost::processId() const {
    if (pretendedProcess)
        return *pretendedProcess;
    const xcb_window_t active = desktop_.windows().active();
    return active == XCB_WINDOW_NONE ? 0 : desktop_.windows().processId(active);
}

QCoro::Task<std::optional<QString>> DesktopFrontmost::primarySelection() {
    harness::ClipboardProbe probe(desktop_.display(), "PRIMARY");
    if (probe.owner() == XCB_WINDOW_NONE)
        co_return std::nullopt;
    co_return probe.text();
}

void AtspiTest::start(const harness::Desktop::Options &options) {
    startDesktop(options);
    adopt();
}

void AtspiTest::adopt() {
    frontmost_ = std::make_unique<DesktopFrontmost>(desktop());
    accessibility_ =
        std::make_unique<AtspiAccessibility>(*frontmost_, desktop().sessionBus().connection());
}

void AtspiTest::TearDown() {
    accessibility_.reset();
    DesktopTest::TearDown();
}

AttributeResult AtspiTest::get(const AccessibilityElementRef &element, const char *attribute) {
    return QCoro::waitFor(
        accessibility_->copyAttributeValue(element, QString::fromLatin1(attribute)));
}

AccessibilityError AtspiTest::set(const AccessibilityElementRef &element, const char *attribute,
                                  const AccessibilityValue &value) {
    return QCoro::waitFor(
        accessibility_->setAttributeValue(element, QString::fromLatin1(attribute), value));
}

AccessibilityElementRef AtspiTest::focusedElement() {
    const AccessibilityElementRef systemWide = accessibility_->createSystemWide();
    const AttributeResult result = get(systemWide, attribute::focusedElement);
    record_ =
        std::dynamic_pointer_cast<const FocusRecord>(accessibility_->chordContext(systemWide));
    const auto *element = std::get_if<AccessibilityElementRef>(&result.value);
    return result.error == AccessibilityError::success && element != nullptr ? *element : nullptr;
}

AccessibilityElementRef AtspiTest::waitForFocusedElement(FocusRecord::Role role) {
    AccessibilityElementRef element;
    harness::waitUntil(
        [&] {
            element = focusedElement();
            return element != nullptr && record_->role == role;
        },
        QStringLiteral("there is a focused element"));
    return element;
}

AccessibilityElementRef AtspiTest::waitForElementHolding(const QString &value) {
    AccessibilityElementRef element;
    harness::waitUntil(
        [&] {
            element = focusedElement();
            return element != nullptr && text(element, attribute::value) == value;
        },
        QStringLiteral("the focused element holds \"%1\"").arg(value.left(40)));
    return element;
}

std::optional<QString> AtspiTest::text(const AccessibilityElementRef &element,
                                       const char *attribute) {
    const AttributeResult result = get(element, attribute);
    const auto *string = std::get_if<QString>(&result.value);
    if (result.error != AccessibilityError::success || string == nullptr)
        return std::nullopt;
    return *string;
}

std::optional<TextRange> AtspiTest::range(const AccessibilityElementRef &element) {
    const AttributeResult result = get(element, attribute::selectedTextRange);
    const auto *found = std::get_if<TextRange>(&result.value);
    if (result.error != AccessibilityError::success || found == nullptr)
        return std::nullopt;
    return *found;
}

} // namespace quillmender
