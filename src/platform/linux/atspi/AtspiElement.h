#pragma once

#include "platform/FocusedText.h"
#include "platform/linux/atspi/BusApplications.h"
#include "platform/linux/atspi/TextUnits.h"
#include "platform/linux/atspi/TreeWalk.h"

namespace quillmender::atspi {

/// An element that was found in some application.
class FoundElement : public FocusedElement {
  public:
    explicit FoundElement(CallBudgetRef captureBudget) : budget(std::move(captureBudget)) {}

    const CallBudgetRef budget;
};

/// The focused element of a terminal: its text is a screen, never a value. Not necessarily on the
/// accessibility bus.
class TerminalElement : public FoundElement {
  public:
    TerminalElement(ObjectRef terminal, CallBudgetRef captureBudget)
        : FoundElement(std::move(captureBudget)),
          object(std::move(terminal)) {}

    const ObjectRef object; ///< null when the terminal is not on the bus
};

/// What was last read of an element, so that a large text need not travel again.
struct ReadMemory {
    std::optional<DecodedText> value;
    qint64 valueCount = 0; ///< the toolkit's CharacterCount for it
    std::optional<OffsetPair> selection;
    std::optional<OffsetPair> selectionOrCaret; ///< absent when it could not be told
    QString selectedText;
};

/// An object with text on the accessibility bus.
class TextElement : public FoundElement {
  public:
    TextElement(ElementTraits elementTraits, Toolkit elementToolkit, CallBudgetRef captureBudget)
        : FoundElement(std::move(captureBudget)),
          traits(std::move(elementTraits)),
          toolkit(elementToolkit) {}

    bool isPassword() const { return traits.role == roles::passwordText; }

    const ElementTraits traits;
    const Toolkit toolkit;
    mutable ReadMemory memory;

    /// The whole text that the range of the capture counts in, and where the selection or the caret
    /// was then.
    mutable std::optional<QString> captured;
    mutable std::optional<OffsetPair> capturedSelection;
};

using TextElementRef = std::shared_ptr<const TextElement>;

} // namespace quillmender::atspi
