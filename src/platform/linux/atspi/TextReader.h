#pragma once

#include "platform/linux/atspi/AtspiElement.h"
#include "platform/linux/atspi/TextFlow.h"

namespace quillmender::atspi {

/// Reads text, selection and range of one object with the Text interface.
class TextReader {
  public:
    /// In offsets of the toolkit's own.
    struct Selection {
        enum class Kind { none, present, unreadable };
        Kind kind = Kind::unreadable;
        OffsetPair offsets; ///< start and end are the caret when there is none
        qint64 caret = -1;
        bool answered = false;
    };

    struct SelectionQuestions {
        PendingCall count;
        PendingCall selection;
        PendingCall caret;
    };
    struct WholeQuestions {
        PendingCall count;
        PendingCall text;
    };

    /// What tells where the selection is, asked of an object before it is known what that is.
    struct EarlyQuestions {
        ObjectRef object;
        SelectionQuestions selection;
        PendingCall count;
    };

    /// What was asked in the same flight as the selected text, to tell its range: a reader who has
    /// the text need not wait for it once more. Good for one reading.
    struct AskedAhead {
        std::optional<EarlyQuestions> early;
        std::optional<SelectionQuestions> selection;
        std::optional<WholeQuestions> whole;
    };
    using AskedAheadRef = std::shared_ptr<AskedAhead>;

    explicit TextReader(AtspiBus &bus) : bus_(bus), flow_(bus) {}

    /// For `AskedAhead::early`. Asks for offsets alone, never for text.
    EarlyQuestions askEarly(const ObjectRef &object, const CallBudgetRef &budget);

    /// Absent when nothing is selected, or something is and nobody can tell what. What the range
    /// needs is asked ahead when somebody wants it.
    QCoro::Task<std::optional<QString>> selectedText(TextElementRef element,
                                                     AskedAheadRef ahead = nullptr);

    /// Absent when there may be a selection that nobody can tell, and for a text with embedded
    /// objects: it is more than text.
    QCoro::Task<std::optional<QString>> value(TextElementRef element);

    /// Absent when nothing is selected, or when it cannot be told. The whole text that it counts in
    /// is in the element's memory then.
    QCoro::Task<std::optional<TextRange>> selectedRange(TextElementRef element,
                                                        AskedAheadRef ahead = nullptr);

    /// The selected text of an object whose offsets mean nothing to others.
    QCoro::Task<QString> plainSelection(ObjectRef object, CallBudgetRef budget);

    /// The whole text and the unit of its offsets, kept in the element's memory too.
    QCoro::Task<std::optional<DecodedText>> wholeText(TextElementRef element);

    QCoro::Task<std::optional<int>> characterCount(TextElementRef element);

    /// Between two offsets of the toolkit's own.
    QCoro::Task<std::optional<QString>> slice(TextElementRef element, OffsetPair offsets,
                                              qint64 characters);

    /// Corrected where the toolkit is known to report it wrongly.
    QCoro::Task<Selection> trueSelection(TextElementRef element);

  private:
    SelectionQuestions askSelection(const ObjectRef &object, const CallBudgetRef &budget);
    PendingCall askCount(const ObjectRef &object, const CallBudgetRef &budget);
    PendingCall askCount(const TextElementRef &element);
    PendingCall askBetween(const TextElementRef &element, OffsetPair offsets, qint64 characters);
    void askAhead(const TextElementRef &element, qint64 characters, AskedAhead &ahead);

    QCoro::Task<std::optional<QString>> sliceTold(TextElementRef element, PendingCall call);
    QCoro::Task<Selection> told(SelectionQuestions questions);
    QCoro::Task<Selection> trueSelection(TextElementRef element, SelectionQuestions questions);
    /// Where it is stays in the element's memory.
    QCoro::Task<Selection> rememberedSelection(TextElementRef element,
                                               SelectionQuestions questions);
    QCoro::Task<std::optional<DecodedText>> wholeText(TextElementRef element, AskedAheadRef ahead);
    /// Into the element's memory.
    QCoro::Task<bool> readWhole(TextElementRef element, std::optional<WholeQuestions> asked);

    AtspiBus &bus_;
    TextFlow flow_;
};

/// Stands in a text for an object that is not text.
inline constexpr char16_t embeddedObject = 0xfffc;

} // namespace quillmender::atspi
