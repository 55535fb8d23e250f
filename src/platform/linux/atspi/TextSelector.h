#pragma once

#include "platform/linux/atspi/TextReader.h"

namespace quillmender::atspi {

/// Selects a range in an object with the Text interface.
class TextSelector {
  public:
    TextSelector(AtspiBus &bus, TextReader &reader) : bus_(bus), reader_(reader) {}

    /// Selects the range, which counts in `text`, what the object holds now: `selected` when the
    /// object was seen to have that selection (or caret, for length 0), `another` when it was seen
    /// to have another, `gone` when the range does not fit the text, `unknown` when it cannot be
    /// told. A browser tells of a new selection only when its page has it: that is waited for as
    /// long as `patience`.
    QCoro::Task<PasteTarget> select(TextElementRef element, DecodedText text, TextRange range,
                                    std::chrono::milliseconds patience = {});

  private:
    QCoro::Task<bool> shows(TextElementRef element, OffsetPair offsets);

    AtspiBus &bus_;
    TextReader &reader_;
};

} // namespace quillmender::atspi
