#pragma once

#include "platform/FocusedText.h"

namespace quillmender {

/// The focused text through the system's own accessibility interface. A call to an application that
/// does not answer ends after a second. An element of this process is nothing: its own panel may
/// have the keyboard while another application's text is captured.
class MacFocusedText : public FocusedText {
  public:
    /// Sets that second for all calls of this process.
    MacFocusedText();

    /// Nothing for an application that nobody knows.
    QCoro::Task<FocusReading> read(RunningApplicationRef application) override;

    QCoro::Task<std::optional<TextRange>> selectedRange(FocusedElementRef element) override;

    /// Writes the element's whole value, with the range of it replaced.
    QCoro::Task<Replacement> replace(FocusedElementRef element, TextRange range,
                                     QString text) override;

    /// Applications keep their selection.
    QCoro::Task<PasteTarget> select(FocusedElementRef element, TextRange range) override;
};

} // namespace quillmender
