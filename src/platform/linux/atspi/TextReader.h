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

    explicit TextReader(AtspiBus &bus) : bus_(bus), flow_(bus) {}

    /// Absent when nothing is selected, or something is and nobody can tell what.
    QCoro::Task<std::optional<QString>> selectedText(TextElementRef element);

    /// Absent when there may be a selection that nobody can tell, and for a text with embedded
    /// objects: it is more than text.
    QCoro::Task<std::optional<QString>> value(TextElementRef element);

    /// Absent when nothing is selected, or when it cannot be told. The whole text that it counts in
    /// is in the element's memory then.
    QCoro::Task<std::optional<TextRange>> selectedRange(TextElementRef element);

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

    /// The same, and where it is stays in the element's memory.
    QCoro::Task<Selection> rememberedSelection(TextElementRef element);

  private:
    /// Into the element's memory.
    QCoro::Task<bool> readWhole(TextElementRef element);
    QCoro::Task<Selection> selection(ObjectRef object, CallBudgetRef budget);
    QCoro::Task<QVariant> between(TextElementRef element, OffsetPair offsets, qint64 characters);

    AtspiBus &bus_;
    TextFlow flow_;
};

/// Stands in a text for an object that is not text.
inline constexpr char16_t embeddedObject = 0xfffc;

} // namespace quillmender::atspi
