#pragma once

#include "platform/Accessibility.h"

namespace quillmender {

/// The system's own accessibility interface. A call to an application that does not answer ends
/// with `cannotComplete` after a second. An element of this process is nothing, wherever one is
/// asked for: its own panel may have the keyboard while another application's text is captured.
class MacAccessibility : public Accessibility {
  public:
    /// Sets that second for all calls of this process.
    MacAccessibility();

    bool isProcessTrusted() override;
    bool isProcessTrustedWithPrompt() override;
    AccessibilityElementRef createSystemWide() override;
    ChordContextRef chordContext(const AccessibilityElementRef &) override { return nullptr; }

    /// Texts, ranges and elements have a value; success with anything else has `std::monostate`.
    QCoro::Task<AttributeResult> copyAttributeValue(AccessibilityElementRef element,
                                                    QString attribute) override;

    /// `illegalArgument` for a value that is neither text nor range, `failure` when the system's
    /// form of the value cannot be made.
    QCoro::Task<AccessibilityError> setAttributeValue(AccessibilityElementRef element,
                                                      QString attribute,
                                                      AccessibilityValue value) override;

    QCoro::Task<PasteTarget> selectBeforePaste(AccessibilityElementRef element,
                                               TextRange range) override;
};

} // namespace quillmender
