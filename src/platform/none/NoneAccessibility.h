#pragma once

#include "platform/Accessibility.h"

namespace quillmender {

/// No access to other applications: never trusted, every attribute is unreadable.
class NoneAccessibility : public Accessibility {
  public:
    bool isProcessTrusted() override { return false; }
    bool isProcessTrustedWithPrompt() override { return false; }
    AccessibilityElementRef createSystemWide() override;
    ChordContextRef chordContext(const AccessibilityElementRef &) override { return nullptr; }
    QCoro::Task<AttributeResult> copyAttributeValue(AccessibilityElementRef element,
                                                    QString attribute) override;
    QCoro::Task<AccessibilityError> setAttributeValue(AccessibilityElementRef element,
                                                      QString attribute,
                                                      AccessibilityValue value) override;
    QCoro::Task<PasteTarget> selectBeforePaste(AccessibilityElementRef element,
                                               TextRange range) override;
};

} // namespace quillmender
