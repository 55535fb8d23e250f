#pragma once

#include "platform/FocusedText.h"

namespace quillmender {

/// Nothing can be read or written of other applications.
class NoneFocusedText : public FocusedText {
  public:
    QCoro::Task<FocusReading> read(RunningApplicationRef application) override;
    QCoro::Task<std::optional<TextRange>> selectedRange(FocusedElementRef element) override;
    QCoro::Task<Replacement> replace(FocusedElementRef element, TextRange range,
                                     QString text) override;
    QCoro::Task<PasteTarget> select(FocusedElementRef element, TextRange range) override;
};

} // namespace quillmender
