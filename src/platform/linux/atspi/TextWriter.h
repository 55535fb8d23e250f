#pragma once

#include "platform/linux/atspi/TextReader.h"
#include "platform/linux/atspi/WriteJudgement.h"

namespace quillmender::atspi {

/// Changes the text of an object with the EditableText interface. Replaces the changed middle
/// only, which keeps the application's undo history. Believes nothing but what it reads back, and
/// puts the old words back when only half of a change was made.
class TextWriter {
  public:
    TextWriter(AtspiBus &bus, TextReader &reader) : bus_(bus), reader_(reader) {}

    struct Result {
        Replacement replacement{};
        qint64 location = 0; ///< where the text was written, when it was
        /// The user has gone on in this text since it was captured: their next key is meant for the
        /// place where they are.
        bool isUserThere = false;
    };

    /// Replaces what stands in the range, which counts in the text that was captured, wherever it
    /// stands now. Refused when other words stand there. Orders that are out are awaited for
    /// `CallBudget::orderPatience`; uncertain when it is not known after that what the object holds
    /// or will hold.
    QCoro::Task<Result> replace(TextElementRef element, TextRange range, QString text);

  private:
    /// To the orders of one change: late when the application stalled meanwhile.
    enum class Reply { unsent, prompt, late, none };
    /// To one order.
    enum class Answer { yes, no, none };
    using Standing = WriteJudgement::Standing;

    QCoro::Task<Replacement> write(TextElementRef element, DecodedText known, TextSplice splice);
    QCoro::Task<bool> standsAsCaptured(TextElementRef element, QString text);
    QCoro::Task<bool> stillHolds(TextElementRef element, DecodedText known, TextSplice splice);
    QCoro::Task<bool> sliceIs(TextElementRef element, DecodedText known, qint64 start, qint64 end);
    QCoro::Task<Reply> apply(TextElementRef element, DecodedText from, TextSplice splice);
    QCoro::Task<Answer> order(TextElementRef element, const char *member, QVariantList arguments,
                              std::chrono::milliseconds allowance);
    /// Reads the text again; puts the old words back when only half of the change was made.
    QCoro::Task<Standing> settle(TextElementRef element, DecodedText old, TextSplice splice);

    AtspiBus &bus_;
    TextReader &reader_;
};

} // namespace quillmender::atspi
