#include "platform/none/NoneAccessibility.h"

namespace quillmender {

AccessibilityElementRef NoneAccessibility::createSystemWide() {
    return std::make_shared<const AccessibilityElement>();
}

QCoro::Task<AttributeResult> NoneAccessibility::copyAttributeValue(AccessibilityElementRef,
                                                                   QString) {
    co_return AttributeResult{AccessibilityError::apiDisabled, {}};
}

QCoro::Task<AccessibilityError> NoneAccessibility::setAttributeValue(AccessibilityElementRef,
                                                                     QString, AccessibilityValue) {
    co_return AccessibilityError::apiDisabled;
}

QCoro::Task<PasteTarget> NoneAccessibility::selectBeforePaste(AccessibilityElementRef, TextRange) {
    co_return PasteTarget::unknown;
}

} // namespace quillmender
