#include "platform/linux/atspi/TextWriter.h"

#include "platform/CharacterBoundary.h"
#include "platform/linux/atspi/EditedText.h"

#include <QElapsedTimer>

#include <algorithm>

namespace quillmender::atspi {

namespace {

constexpr qint64 contextUnits = 64;

bool canBeWritten(const TextElement &element) {
    // Gecko answers that it did and does not; Chromium has no way to.
    return element.toolkit != Toolkit::gecko && element.toolkit != Toolkit::chromium &&
           element.traits.interfaces.contains(QLatin1String(protocol::editableText)) &&
           element.traits.states.has(State::editable) &&
           !element.traits.states.has(State::readOnly) && !element.isPassword();
}

/// A paragraph of Writer is an object of its own, and a line break in it would make two of it.
bool staysWhole(const TextElement &element, const TextSplice &splice) {
    return element.toolkit != Toolkit::libreOffice ||
           !(splice.inserted.contains(u'\n') || splice.inserted.contains(u'\r'));
}

/// What the bus can carry unchanged, and a text field too.
bool canBeCarried(const QString &text) {
    return text.isValidUtf16() && !text.contains(QChar(u'\0')) &&
           !text.contains(QChar(embeddedObject));
}

/// InsertText wants the length of the text in the toolkit's own measure.
int insertLength(Toolkit toolkit, const QString &text) {
    return int(toolkit == Toolkit::qt ? text.size() : text.toUtf8().size());
}

/// An application that is well answers two orders in the time of any two calls.
bool isPrompt(const QElapsedTimer &sinceSent, std::chrono::milliseconds allowance) {
    return sinceSent.elapsed() <= 2 * (CallBudget::perCall + allowance).count();
}

/// Of what stands in the range, the part that changes: the rest keeps its history.
TextSplice spliceOf(const QString &text, TextRange range, const QString &replacement) {
    TextSplice splice = computeSplice(text.mid(range.location, range.length), replacement);
    splice.start += range.location;
    return splice;
}

Replacement refused(const char *reason) {
    return {Replacement::Outcome::refused, QLatin1String(reason)};
}

Replacement uncertain(const char *reason) {
    return {Replacement::Outcome::uncertain, QLatin1String(reason)};
}

qint64 outsidePair(const QString &text, qint64 offset) {
    const qint64 inside = std::clamp<qint64>(offset, 0, text.size());
    const bool splits = inside > 0 && inside < text.size() && text[inside].isLowSurrogate();
    return splits ? inside - 1 : inside;
}

} // namespace

QCoro::Task<TextWriter::Result> TextWriter::replace(TextElementRef element, TextRange range,
                                                    QString text) {
    if (!canBeWritten(*element))
        co_return Result{refused("the application does not let others edit this text")};
    if (!canBeCarried(text))
        co_return Result{refused("the answer is no text for a field")};
    const std::optional<DecodedText> known = co_await reader_.wholeText(element);
    if (!known || !known->unit || known->text.contains(QChar(embeddedObject)))
        co_return Result{refused("the text cannot be read, or is more than text")};

    const QString &captured = element->captured ? *element->captured : known->text;
    const std::optional<TextRange> now = rangeAfterEdit(captured, known->text, range);
    if (!now)
        co_return Result{refused("the captured text was edited")};
    if (!fallsOnCharacterBoundaries(known->text, *now))
        co_return Result{refused("the range splits a character or lies outside the text")};

    const TextSplice splice = spliceOf(known->text, *now, text);
    if (!staysWhole(*element, splice))
        co_return Result{refused("a paragraph would become two")};
    const bool isSame = co_await standsAsCaptured(element, known->text);
    // The last question before the orders.
    const bool unchanged = co_await stillHolds(element, *known, splice);
    if (!unchanged)
        co_return Result{refused("the text changes while it is read")};
    Result result;
    result.location = now->location;
    result.replacement = co_await write(element, *known, splice);
    QString wanted = known->text;
    wanted.replace(now->location, now->length, text);
    const std::optional<DecodedText> &shown = element->memory.value;
    result.isUserThere = !isSame || !shown || shown->text != wanted;
    co_return result;
}

QCoro::Task<bool> TextWriter::standsAsCaptured(TextElementRef element, QString text) {
    if (element->captured && *element->captured != text)
        co_return false;
    if (!element->capturedSelection)
        co_return true;
    const TextReader::Selection selection = co_await reader_.trueSelection(element);
    co_return selection.kind == TextReader::Selection::Kind::unreadable ||
        selection.offsets == *element->capturedSelection;
}

QCoro::Task<Replacement> TextWriter::write(TextElementRef element, DecodedText known,
                                           TextSplice splice) {
    if (splice.isEmpty())
        co_return Replacement{Replacement::Outcome::done};
    element->budget->beginWait(CallBudget::orderPatience);
    const Reply reply = co_await apply(element, known, splice);
    if (reply == Reply::unsent)
        co_return refused("nothing could be sent");
    if (reply == Reply::none) {
        // There are toolkits that act and never answer. More than a look is not to be risked.
        element->budget->renew();
        element->budget->forgive(element->traits.object.service);
        const auto shown = co_await reader_.wholeText(element);
        if (shown && judgeWrite(known.text, splice, shown->text).standing == Standing::written)
            co_return Replacement{Replacement::Outcome::done};
        co_return uncertain("the application did not answer an order in time");
    }
    const Standing standing = co_await settle(element, known, splice);
    if (standing == Standing::written)
        co_return Replacement{Replacement::Outcome::done};
    // Who was late with the answer may be late with the change as well.
    if (standing == Standing::untouched && reply == Reply::prompt)
        co_return refused("the application did not carry the order out");
    co_return uncertain("the application was late, or shows another text than was written");
}

/// Compares the length, and the text around both ends of what is to go: the caller read the whole
/// a moment ago, and what comes of the change is read as a whole again.
QCoro::Task<bool> TextWriter::stillHolds(TextElementRef element, DecodedText known,
                                         TextSplice splice) {
    const std::optional<int> count = co_await reader_.characterCount(element);
    if (count != element->memory.valueCount)
        co_return false;
    const qint64 end = splice.start + splice.removed.size();
    const bool startHolds =
        co_await sliceIs(element, known, splice.start - contextUnits, splice.start + contextUnits);
    if (!startHolds)
        co_return false;
    co_return co_await sliceIs(element, known, end - contextUnits, end + contextUnits);
}

QCoro::Task<bool> TextWriter::sliceIs(TextElementRef element, DecodedText known, qint64 start,
                                      qint64 end) {
    const qint64 from = outsidePair(known.text, start);
    const qint64 to = outsidePair(known.text, end);
    if (from == to)
        co_return true;
    const auto fromOffset = fromUtf16(known.text, from, *known.unit);
    const auto toOffset = fromUtf16(known.text, to, *known.unit);
    if (!fromOffset || !toOffset)
        co_return false;
    const auto shown = co_await reader_.slice(element, {*fromOffset, *toOffset}, to - from);
    co_return shown == known.text.mid(from, to - from);
}

QCoro::Task<TextWriter::Reply> TextWriter::apply(TextElementRef element, DecodedText from,
                                                 TextSplice splice) {
    const auto start = fromUtf16(from.text, splice.start, *from.unit);
    const auto end = fromUtf16(from.text, splice.start + splice.removed.size(), *from.unit);
    if (!start || !end)
        co_return Reply::unsent;
    const auto allowance =
        CallBudget::transferAllowance(splice.removed.size() + splice.inserted.size());
    const QVariantList deletion = {int(*start), int(*end)};
    const QVariantList insertion = {int(*start), splice.inserted,
                                    insertLength(element->toolkit, splice.inserted)};
    QElapsedTimer sinceSent;
    sinceSent.start();

    if (!splice.removed.isEmpty()) {
        const Answer deleted = co_await order(element, "DeleteText", deletion, allowance);
        if (deleted == Answer::none) {
            // The order to delete may still be waiting in front of the application. The words
            // that belong in its place must then be waiting behind it.
            if (!splice.inserted.isEmpty())
                bus_.post(element->traits.object, protocol::editableText, "InsertText", insertion);
            co_return Reply::none;
        }
        if (deleted == Answer::no)
            co_return isPrompt(sinceSent, allowance) ? Reply::prompt : Reply::late;
    }
    if (!splice.inserted.isEmpty()) {
        const Answer inserted = co_await order(element, "InsertText", insertion, allowance);
        if (inserted == Answer::none)
            co_return Reply::none;
    }
    co_return isPrompt(sinceSent, allowance) ? Reply::prompt : Reply::late;
}

QCoro::Task<TextWriter::Answer> TextWriter::order(TextElementRef element, const char *member,
                                                  QVariantList arguments,
                                                  std::chrono::milliseconds allowance) {
    const ObjectRef &object = element->traits.object;
    const PendingCall call =
        bus_.call(element->budget, object, protocol::editableText, member, arguments, allowance);
    const auto answer = co_await call.answer();
    if (!answer && element->budget->isSilent(object.service))
        co_return Answer::none;
    co_return firstValue(answer).toBool() ? Answer::yes : Answer::no;
}

/// Not given up at the first refusal where words of the user are missing.
QCoro::Task<WriteJudgement::Standing> TextWriter::settle(TextElementRef element, DecodedText old,
                                                         TextSplice splice) {
    constexpr int repairs = 4;
    for (int repair = 1;; ++repair) {
        const auto shown = co_await reader_.wholeText(element);
        if (!shown || !shown->unit)
            co_return Standing::unknown;
        const WriteJudgement judged = judgeWrite(old.text, splice, shown->text);
        if (judged.standing != Standing::missing)
            co_return judged.standing;
        if (repair > repairs)
            co_return Standing::unknown;
        Reply reply = Reply::none;
        if (repair < repairs) {
            const TextSplice back = computeSplice(shown->text, judged.repaired);
            reply = co_await apply(element, *shown, back);
        } else {
            // It takes the field's history along, and is the last way.
            const QVariantList whole = {judged.repaired};
            const Answer answer = co_await order(element, "SetTextContents", whole, {});
            reply = answer == Answer::none ? Reply::none : Reply::prompt;
        }
        if (reply == Reply::none || reply == Reply::unsent)
            co_return Standing::unknown;
    }
}

} // namespace quillmender::atspi
