#include "platform/linux/atspi/TextReader.h"

#include <algorithm>
#include <utility>

namespace quillmender::atspi {

QCoro::Task<TextReader::Selection> TextReader::selection(ObjectRef object, CallBudgetRef budget) {
    const PendingCall countCall = bus_.call(budget, object, protocol::text, "GetNSelections");
    const PendingCall selectionCall =
        bus_.call(budget, object, protocol::text, "GetSelection", {0});
    const PendingCall caretCall = bus_.property(budget, object, protocol::text, "CaretOffset");
    const auto countAnswer = co_await countCall.answer();
    const auto selectionAnswer = co_await selectionCall.answer();
    const auto caretAnswer = co_await caretCall.answer();

    Selection result;
    const std::optional<int> count = intValue(countAnswer);
    const std::optional<int> caret = intValue(caretAnswer);
    if (!count)
        co_return result;
    result.answered = true;
    result.caret = caret.value_or(-1);
    if (selectionAnswer && *count == 1) {
        const qint64 first = selectionAnswer->value(0).toInt();
        const qint64 second = selectionAnswer->value(1).toInt();
        result.offsets = {std::min(first, second), std::max(first, second)};
    }
    if (*count <= 0 || (*count == 1 && result.offsets.start == result.offsets.end)) {
        result.kind = caret ? Selection::Kind::none : Selection::Kind::unreadable;
        result.offsets = {caret.value_or(0), caret.value_or(0)};
    } else if (*count == 1 && selectionAnswer && result.offsets.start >= 0) {
        result.kind = Selection::Kind::present;
    }
    co_return result;
}

QCoro::Task<TextReader::Selection> TextReader::trueSelection(TextElementRef element) {
    Selection reported = co_await selection(element->traits.object, element->budget);
    if (element->toolkit == Toolkit::libreOffice && reported.answered) {
        const bool goesOn = co_await flow_.selectionGoesOn(element->traits.object, element->budget);
        if (goesOn)
            reported.kind = Selection::Kind::unreadable;
    }
    if (element->toolkit != Toolkit::chromium || reported.kind == Selection::Kind::unreadable)
        co_return reported;

    const auto text = co_await wholeText(element);
    if (reported.kind == Selection::Kind::none) {
        if (!text || mayHideSelection(text->text))
            reported.kind = Selection::Kind::unreadable;
        co_return reported;
    }
    std::optional<OffsetPair> untangled;
    if (text && text->unit)
        untangled = untangledSelection(text->text, reported.offsets, reported.caret);
    if (untangled)
        reported.offsets = *untangled;
    else
        reported.kind = Selection::Kind::unreadable;
    co_return reported;
}

QCoro::Task<TextReader::Selection> TextReader::rememberedSelection(TextElementRef element) {
    const Selection found = co_await trueSelection(element);
    element->memory.selectionOrCaret.reset();
    if (found.kind != Selection::Kind::unreadable)
        element->memory.selectionOrCaret = found.offsets;
    co_return found;
}

QCoro::Task<std::optional<int>> TextReader::characterCount(TextElementRef element) {
    const PendingCall call =
        bus_.property(element->budget, element->traits.object, protocol::text, "CharacterCount");
    const auto answer = co_await call.answer();
    co_return intValue(answer);
}

QCoro::Task<QVariant> TextReader::between(TextElementRef element, OffsetPair offsets,
                                          qint64 characters) {
    const PendingCall call = bus_.call(element->budget, element->traits.object, protocol::text,
                                       "GetText", {int(offsets.start), int(offsets.end)},
                                       CallBudget::transferAllowance(characters));
    const auto answer = co_await call.answer();
    co_return firstValue(answer);
}

QCoro::Task<std::optional<QString>> TextReader::slice(TextElementRef element, OffsetPair offsets,
                                                      qint64 characters) {
    const QVariant text = co_await between(element, offsets, characters);
    if (text.metaType() != QMetaType::fromType<QString>())
        co_return std::nullopt;
    if (element->toolkit == Toolkit::gecko)
        co_return withoutPadding(text.toString());
    co_return text.toString();
}

QCoro::Task<std::optional<DecodedText>> TextReader::wholeText(TextElementRef element) {
    // Between the question for the length and the one for the text the user may have typed.
    constexpr int attempts = 3;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        const bool isRead = co_await readWhole(element);
        if (!isRead)
            co_return std::nullopt;
        if (element->memory.value->unit)
            break;
    }
    co_return std::as_const(element->memory.value);
}

QCoro::Task<bool> TextReader::readWhole(TextElementRef element) {
    element->memory.value.reset();
    const std::optional<int> count = co_await characterCount(element);
    if (!count)
        co_return false;
    QVariant raw = co_await between(element, {0, -1}, *count);
    // The entry of GTK 4 has nothing between its start and "the end".
    if (*count > 0 && raw.toString().isEmpty())
        raw = co_await between(element, {0, *count}, *count);
    if (raw.metaType() != QMetaType::fromType<QString>())
        co_return false;
    const bool padded = element->toolkit == Toolkit::gecko;
    element->memory.value = decodeText(raw.toString(), *count, padded);
    element->memory.valueCount = *count;
    co_return true;
}

QCoro::Task<std::optional<QString>> TextReader::selectedText(TextElementRef element) {
    element->memory.selection.reset();
    const Selection found = co_await rememberedSelection(element);
    if (found.kind != Selection::Kind::present)
        co_return std::nullopt;
    const auto text =
        co_await slice(element, found.offsets, found.offsets.end - found.offsets.start);
    if (!text || text->contains(QChar(embeddedObject)))
        co_return std::nullopt;
    element->memory.selection = found.offsets;
    element->memory.selectedText = *text;
    co_return text;
}

QCoro::Task<std::optional<QString>> TextReader::value(TextElementRef element) {
    const Selection found = co_await trueSelection(element);
    if (found.answered && found.kind == Selection::Kind::unreadable)
        co_return std::nullopt;
    const auto text = co_await wholeText(element);
    if (!text || text->text.contains(QChar(embeddedObject)))
        co_return std::nullopt;
    co_return std::make_optional(text->text);
}

QCoro::Task<std::optional<TextRange>> TextReader::selectedRange(TextElementRef element) {
    const Selection found = co_await rememberedSelection(element);
    if (found.kind != Selection::Kind::present)
        co_return std::nullopt;
    const auto text = co_await wholeText(element);
    if (!text || !text->unit)
        co_return std::nullopt;
    const auto start = toUtf16(text->text, found.offsets.start, *text->unit);
    const auto end = toUtf16(text->text, found.offsets.end, *text->unit);
    if (!start || !end)
        co_return std::nullopt;
    const TextRange range{*start, *end - *start};

    std::optional<QString> shown;
    if (element->memory.selection == found.offsets)
        shown = element->memory.selectedText;
    else
        shown = co_await slice(element, found.offsets, range.length);
    if (shown != text->text.mid(range.location, range.length))
        co_return std::nullopt;
    co_return std::make_optional(range);
}

QCoro::Task<QString> TextReader::plainSelection(ObjectRef object, CallBudgetRef budget) {
    const Selection found = co_await selection(object, budget);
    if (found.kind != Selection::Kind::present)
        co_return QString();
    const PendingCall call = bus_.call(budget, object, protocol::text, "GetText",
                                       {int(found.offsets.start), int(found.offsets.end)},
                                       CallBudget::transferAllowance(found.offsets.end));
    const auto answer = co_await call.answer();
    co_return firstValue(answer).toString();
}

} // namespace quillmender::atspi
