#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/FocusRecord.h"
#include "platform/linux/atspi/Applications.h"
#include "platform/linux/atspi/TextUnits.h"
#include "platform/linux/atspi/TreeWalk.h"

namespace quillmender {

/// The element that is asked for the focused one; one per capture.
class SystemWideElement : public AccessibilityElement {
  public:
    const BudgetRef budget = std::make_shared<Budget>();

    /// What was learned when the focused element was asked for.
    mutable std::shared_ptr<const FocusRecord> record;
};

/// An element that was found in some application.
class FoundElement : public AccessibilityElement {
  public:
    FoundElement(RunningApplicationRef application, BudgetRef captureBudget)
        : budget(std::move(captureBudget)),
          application_(std::move(application)) {}

    bool isOf(const RunningApplicationRef &application) const override {
        return !application_ || !application || application_->isSame(*application);
    }

    const BudgetRef budget;

  private:
    RunningApplicationRef application_;
};

/// The focused element of a terminal: its text is a screen, never a value. Not necessarily on the
/// accessibility bus.
class TerminalElement : public FoundElement {
  public:
    TerminalElement(RunningApplicationRef application, ObjectRef terminal, BudgetRef captureBudget)
        : FoundElement(std::move(application), std::move(captureBudget)),
          object(std::move(terminal)) {}

    const ObjectRef object; ///< null when the terminal is not on the bus
};

/// What was last read of an element, kept so that a later write can tell whether the user has
/// changed it meanwhile, and so that a large text need not travel again.
struct ReadMemory {
    std::optional<DecodedText> value;
    qint64 valueCount = 0; ///< the toolkit's CharacterCount for it
    std::optional<OffsetPair> selection;
    QString selectedText;
};

/// An object with text on the accessibility bus.
class TextElement : public FoundElement {
  public:
    TextElement(RunningApplicationRef application, Traits elementTraits, Toolkit elementToolkit,
                BudgetRef captureBudget)
        : FoundElement(std::move(application), std::move(captureBudget)),
          traits(std::move(elementTraits)),
          toolkit(elementToolkit) {}

    bool isPassword() const { return traits.role == atspi_role::passwordText; }

    const Traits traits;
    const Toolkit toolkit;
    mutable ReadMemory memory;
};

using TextElementRef = std::shared_ptr<const TextElement>;

} // namespace quillmender
