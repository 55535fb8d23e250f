#pragma once

#include "platform/linux/atspi/TextReader.h"
#include "platform/linux/atspi/TextSplice.h"

namespace quillmender {

/// Changes the text of an object with the EditableText interface. Replaces the changed middle
/// only, which keeps the application's undo history. Believes nothing but what it reads back, and
/// puts the old words back when only half of a change was made.
class TextWriter {
  public:
    TextWriter(AtspiBus &bus, TextReader &reader) : bus_(bus), reader_(reader) {}

    /// `text` was made from the value that was read last through this element; if the object no
    /// longer holds that value, nothing is touched.
    QCoro::Task<AccessibilityError> write(TextElementRef element, QString text);

  private:
    enum class Outcome { done, refused, silent };

    QCoro::Task<bool> stillHolds(TextElementRef element, DecodedText known, TextSplice splice);
    QCoro::Task<bool> sliceIs(TextElementRef element, DecodedText known, qint64 start, qint64 end);
    QCoro::Task<Outcome> apply(TextElementRef element, DecodedText from, TextSplice splice);
    QCoro::Task<AccessibilityError> verify(TextElementRef element, DecodedText old,
                                           TextSplice splice, QString wanted);

    AtspiBus &bus_;
    TextReader &reader_;
};

} // namespace quillmender
