#pragma once

#include "platform/linux/FrontmostSource.h"
#include "platform/linux/atspi/AtspiElement.h"
#include "platform/linux/atspi/FocusEvents.h"
#include "platform/linux/atspi/FocusFinder.h"
#include "platform/linux/atspi/TextReader.h"
#include "platform/linux/atspi/TextSelector.h"
#include "platform/linux/atspi/TextWriter.h"

namespace quillmender {

/// Accessibility through AT-SPI2. Follows the focus from the moment it is made. Trusted means
/// that the accessibility bus answers and the desktop's accessibility is switched on.
///
/// A call to an application may take 250 ms and what one system-wide element leads to 600 ms in
/// all, plus the time that a large text needs to travel. Operations under way must not outlive
/// the object.
class AtspiAccessibility : public Accessibility {
  public:
    explicit AtspiAccessibility(FrontmostSource &frontmost,
                                const QDBusConnection &session = QDBusConnection::sessionBus());

    bool isProcessTrusted() override;
    bool isProcessTrustedWithPrompt() override;
    AccessibilityElementRef createSystemWide() override;
    ChordContextRef chordContext(const AccessibilityElementRef &systemWide) override;
    QCoro::Task<AttributeResult> copyAttributeValue(AccessibilityElementRef element,
                                                    QString attribute) override;
    QCoro::Task<AccessibilityError> setAttributeValue(AccessibilityElementRef element,
                                                      QString attribute,
                                                      AccessibilityValue value) override;
    QCoro::Task<PasteTarget> selectBeforePaste(AccessibilityElementRef element,
                                               TextRange range) override;

  private:
    using SystemWideRef = std::shared_ptr<const SystemWideElement>;

    QCoro::Task<AttributeResult> focusedElement(SystemWideRef systemWide);
    QCoro::Task<AttributeResult> terminalAttribute(std::shared_ptr<const TerminalElement> terminal,
                                                   QString attribute);
    QCoro::Task<AttributeResult> textAttribute(TextElementRef element, QString attribute);

    FrontmostSource &frontmost_;
    AtspiBus bus_;
    Applications applications_{bus_};
    FocusMemory memory_;
    FocusEvents events_{bus_, applications_, memory_};
    FocusFinder finder_{bus_, applications_, memory_, frontmost_};
    TextReader reader_{bus_};
    TextSelector selector_{bus_, reader_};
    TextWriter writer_{bus_, reader_};
};

} // namespace quillmender
