#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/atspi/Applications.h"
#include "platform/linux/atspi/TextUnits.h"
#include "platform/linux/atspi/TreeWalk.h"

namespace quillmender {

/// The element that is asked for the focused one; one per capture.
class SystemWideElement : public AccessibilityElement {
  public:
    const BudgetRef budget = std::make_shared<Budget>();
};

/// The focused element of a terminal: its text is a screen, never a value. Not necessarily on the
/// accessibility bus.
class TerminalElement : public AccessibilityElement {
  public:
    TerminalElement(ObjectRef terminal, BudgetRef captureBudget)
        : object(std::move(terminal)),
          budget(std::move(captureBudget)) {}

    const ObjectRef object; ///< null when the terminal is not on the bus
    const BudgetRef budget;
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
class TextElement : public AccessibilityElement {
  public:
    TextElement(Traits elementTraits, Toolkit elementToolkit, BudgetRef captureBudget)
        : traits(std::move(elementTraits)),
          toolkit(elementToolkit),
          budget(std::move(captureBudget)) {}

    bool isPassword() const { return traits.role == atspi_role::passwordText; }

    const Traits traits;
    const Toolkit toolkit;
    const BudgetRef budget;
    mutable ReadMemory memory;
};

using TextElementRef = std::shared_ptr<const TextElement>;

} // namespace quillmender
