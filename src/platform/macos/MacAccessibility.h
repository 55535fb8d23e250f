#pragma once

#include "platform/Accessibility.h"

namespace quillmender {

/// The system's own accessibility interface. A call to an application that does not answer ends
/// with `cannotComplete` after the system's time-out for such messages.
class MacAccessibility : public Accessibility {
  public:
    bool isProcessTrusted() override;
    bool isProcessTrustedWithPrompt() override;
    AccessibilityElementRef createSystemWide() override;

    /// Texts, ranges and elements have a value; success with anything else has `std::monostate`.
    QCoro::Task<AttributeResult> copyAttributeValue(AccessibilityElementRef element,
                                                    QString attribute) override;

    /// `illegalArgument` for a value that is neither text nor range, `failure` when the system's
    /// form of the value cannot be made.
    QCoro::Task<AccessibilityError> setAttributeValue(AccessibilityElementRef element,
                                                      QString attribute,
                                                      AccessibilityValue value) override;

    QCoro::Task<> selectBeforePaste(AccessibilityElementRef element, TextRange range) override;
};

} // namespace quillmender
