#pragma once

#include "platform/linux/atspi/TextReader.h"

namespace quillmender {

/// Selects a range in an object with the Text interface.
class TextSelector {
  public:
    TextSelector(AtspiBus &bus, TextReader &reader) : bus_(bus), reader_(reader) {}

    /// Success when the object was seen to have that selection (or caret, for length 0), failure
    /// when it was seen to have another, illegalArgument when the range does not fit its text,
    /// cannotComplete when it cannot be told. A browser tells of a new selection only when its page
    /// has it: that is waited for as long as `patience`.
    QCoro::Task<AccessibilityError> select(TextElementRef element, TextRange range,
                                           std::chrono::milliseconds patience = {});

  private:
    QCoro::Task<std::optional<DecodedText>> currentText(TextElementRef element);
    QCoro::Task<bool> shows(TextElementRef element, OffsetPair offsets);

    AtspiBus &bus_;
    TextReader &reader_;
};

} // namespace quillmender
