#include "platform/linux/atspi/TextReader.h"

#include <algorithm>
#include <utility>

namespace quillmender::atspi {

namespace {
constexpr OffsetPair wholeRange{0, -1};
} // namespace

TextReader::SelectionQuestions TextReader::askSelection(const ObjectRef &object,
                                                        const CallBudgetRef &budget) {
    return {bus_.call(budget, object, protocol::text, "GetNSelections"),
            bus_.call(budget, object, protocol::text, "GetSelection", {0}),
            bus_.property(budget, object, protocol::text, "CaretOffset")};
}

PendingCall TextReader::askCount(const ObjectRef &object, const CallBudgetRef &budget) {
    return bus_.property(budget, object, protocol::text, "CharacterCount");
}

PendingCall TextReader::askCount(const TextElementRef &element) {
    return askCount(element->traits.object, element->budget);
}

TextReader::EarlyQuestions TextReader::askEarly(const ObjectRef &object,
                                                const CallBudgetRef &budget) {
    return {object, askSelection(object, budget), askCount(object, budget)};
}

PendingCall TextReader::askBetween(const TextElementRef &element, OffsetPair offsets,
                                   qint64 characters) {
    return bus_.call(element->budget, element->traits.object, protocol::text, "GetText",
                     {int(offsets.start), int(offsets.end)},
                     CallBudget::transferAllowance(characters));
}

void TextReader::askAhead(const TextElementRef &element, qint64 characters, AskedAhead &ahead) {
    // The ones whose selection is what they say it is. And a text that takes long to send is not
    // asked for before it is known to be needed.
    constexpr qint64 most = 65536;
    const bool isPlain =
        element->toolkit != Toolkit::libreOffice && element->toolkit != Toolkit::chromium;
    if (!isPlain || characters > most)
        return;
    ahead.selection = askSelection(element->traits.object, element->budget);
    ahead.whole = WholeQuestions{askCount(element), askBetween(element, wholeRange, characters)};
}

QCoro::Task<TextReader::Selection> TextReader::told(SelectionQuestions questions) {
    const auto countAnswer = co_await questions.count.answer();
    const auto selectionAnswer = co_await questions.selection.answer();
    const auto caretAnswer = co_await questions.caret.answer();

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
    return trueSelection(element, askSelection(element->traits.object, element->budget));
}

QCoro::Task<TextReader::Selection> TextReader::trueSelection(TextElementRef element,
                                                             SelectionQuestions questions) {
    Selection reported = co_await told(std::move(questions));
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

QCoro::Task<TextReader::Selection> TextReader::rememberedSelection(TextElementRef element,
                                                                   SelectionQuestions questions) {
    const Selection found = co_await trueSelection(element, std::move(questions));
    element->memory.selectionOrCaret.reset();
    if (found.kind != Selection::Kind::unreadable)
        element->memory.selectionOrCaret = found.offsets;
    co_return found;
}

QCoro::Task<std::optional<int>> TextReader::characterCount(TextElementRef element) {
    const PendingCall call = askCount(element);
    const auto answer = co_await call.answer();
    co_return intValue(answer);
}

QCoro::Task<std::optional<QString>> TextReader::slice(TextElementRef element, OffsetPair offsets,
                                                      qint64 characters) {
    const PendingCall call = askBetween(element, offsets, characters);
    co_return co_await sliceTold(element, call);
}

QCoro::Task<std::optional<QString>> TextReader::sliceTold(TextElementRef element,
                                                          PendingCall call) {
    const auto answer = co_await call.answer();
    const QVariant text = firstValue(answer);
    if (text.metaType() != QMetaType::fromType<QString>())
        co_return std::nullopt;
    if (element->toolkit == Toolkit::gecko)
        co_return withoutPadding(text.toString());
    co_return text.toString();
}

QCoro::Task<std::optional<DecodedText>> TextReader::wholeText(TextElementRef element) {
    return wholeText(std::move(element), nullptr);
}

QCoro::Task<std::optional<DecodedText>> TextReader::wholeText(TextElementRef element,
                                                              AskedAheadRef ahead) {
    // Between the question for the length and the one for the text the user may have typed.
    constexpr int attempts = 3;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        std::optional<WholeQuestions> asked;
        if (ahead)
            asked.swap(ahead->whole);
        const bool isRead = co_await readWhole(element, std::move(asked));
        if (!isRead)
            co_return std::nullopt;
        if (element->memory.value->unit)
            break;
    }
    co_return std::as_const(element->memory.value);
}

QCoro::Task<bool> TextReader::readWhole(TextElementRef element,
                                        std::optional<WholeQuestions> asked) {
    element->memory.value.reset();
    const PendingCall countCall = asked ? asked->count : askCount(element);
    const auto countAnswer = co_await countCall.answer();
    const std::optional<int> count = intValue(countAnswer);
    if (!count)
        co_return false;
    const PendingCall textCall = asked ? asked->text : askBetween(element, wholeRange, *count);
    const auto textAnswer = co_await textCall.answer();
    QVariant raw = firstValue(textAnswer);
    // The entry of GTK 4 has nothing between its start and "the end".
    if (*count > 0 && raw.toString().isEmpty()) {
        const PendingCall bounded = askBetween(element, {0, *count}, *count);
        const auto answer = co_await bounded.answer();
        raw = firstValue(answer);
    }
    if (raw.metaType() != QMetaType::fromType<QString>())
        co_return false;
    const bool padded = element->toolkit == Toolkit::gecko;
    element->memory.value = decodeText(raw.toString(), *count, padded);
    element->memory.valueCount = *count;
    co_return true;
}

QCoro::Task<std::optional<QString>> TextReader::selectedText(TextElementRef element,
                                                             AskedAheadRef ahead) {
    element->memory.selection.reset();
    std::optional<EarlyQuestions> asked;
    if (ahead)
        asked.swap(ahead->early);
    if (!asked || asked->object != element->traits.object)
        asked = askEarly(element->traits.object, element->budget);
    const Selection found = co_await rememberedSelection(element, std::move(asked->selection));
    const auto countAnswer = co_await asked->count.answer();
    if (found.kind != Selection::Kind::present)
        co_return std::nullopt;
    const PendingCall call =
        askBetween(element, found.offsets, found.offsets.end - found.offsets.start);
    if (const auto count = intValue(countAnswer); count && ahead)
        askAhead(element, *count, *ahead);
    const auto text = co_await sliceTold(element, call);
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

QCoro::Task<std::optional<TextRange>> TextReader::selectedRange(TextElementRef element,
                                                                AskedAheadRef ahead) {
    std::optional<SelectionQuestions> asked;
    if (ahead)
        asked.swap(ahead->selection);
    if (!asked)
        asked = askSelection(element->traits.object, element->budget);
    const Selection found = co_await rememberedSelection(element, std::move(*asked));
    if (found.kind != Selection::Kind::present)
        co_return std::nullopt;
    const auto text = co_await wholeText(element, std::move(ahead));
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
    SelectionQuestions questions = askSelection(object, budget);
    const Selection found = co_await told(std::move(questions));
    if (found.kind != Selection::Kind::present)
        co_return QString();
    const PendingCall call = bus_.call(budget, object, protocol::text, "GetText",
                                       {int(found.offsets.start), int(found.offsets.end)},
                                       CallBudget::transferAllowance(found.offsets.end));
    const auto answer = co_await call.answer();
    co_return firstValue(answer).toString();
}

} // namespace quillmender::atspi
