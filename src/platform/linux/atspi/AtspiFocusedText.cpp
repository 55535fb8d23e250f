#include "platform/linux/atspi/AtspiFocusedText.h"

#include "platform/BlankText.h"
#include "platform/linux/FocusContext.h"
#include "platform/linux/atspi/AccessibleApplication.h"
#include "platform/linux/atspi/BusPulse.h"
#include "platform/linux/atspi/EditedText.h"
#include "platform/linux/atspi/RegistryRelay.h"

namespace quillmender::atspi {

namespace {

bool isSame(const RunningApplicationRef &one, const RunningApplicationRef &other) {
    return one && other ? one->isSame(*other) : one == other;
}

FocusReading readingElsewhere(const RunningApplicationRef &asked) {
    FocusReading reading;
    reading.application = asked;
    reading.isElsewhere = true;
    return reading;
}

QString textAt(const QString &whole, TextRange range) {
    return whole.mid(range.location, range.length);
}

} // namespace

AtspiFocusedText::AtspiFocusedText(FrontmostSource &frontmost, AtspiBus &bus)
    : frontmost_(frontmost),
      bus_(bus) {}

QCoro::Task<FocusReading> AtspiFocusedText::read(RunningApplicationRef application) {
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    const RunningApplicationRef front = frontmost_.application();
    if (application && !isSame(application, front))
        co_return readingElsewhere(application);

    const bool inTerminal = frontmost_.isTerminal();
    const qint64 process = front ? front->processId() : 0;
    std::optional<ElementTraits> found;
    const auto ahead = std::make_shared<TextReader::AskedAhead>();
    if (bus_.isConnected()) {
        auto finding = finder_.find(process, budget);
        // It is mostly what is found, and these are answered in the same flight.
        const std::optional<ObjectRef> likely = finder_.likely(process);
        if (likely && !inTerminal)
            ahead->early = reader_.askEarly(*likely, budget);
        found = co_await finding;
    }
    // What has the focus now may be in another window than what had it then.
    if (!isSame(front, frontmost_.application()))
        co_return readingElsewhere(application);

    const auto reading = std::make_shared<FocusReading>();
    const auto context = std::make_shared<FocusContext>();
    reading->application = front;
    reading->chordContext = context;
    QString service;
    if (found)
        service = found->object.service;
    else if (!inTerminal)
        service = co_await finder_.serviceInFront(process, budget);
    if (!front && !service.isEmpty()) {
        const qint64 owner = co_await applications_.processOf(service, budget);
        reading->application = std::make_shared<const AccessibleApplication>(owner);
    }

    const bool isEntryOfTerminal =
        found && inTerminal && found->role != roles::terminal && found->states.has(State::editable);
    if ((inTerminal && !isEntryOfTerminal) || (found && found->role == roles::terminal)) {
        context->role = FocusContext::Role::terminal;
        co_await readTerminal(reading, found, budget);
        co_return *reading;
    }
    const Toolkit toolkit = co_await applications_.toolkitOf(service, budget);
    if (toolkit == Toolkit::qt)
        context->relay = std::make_shared<RegistryRelay>(bus_, service);
    if (!service.isEmpty())
        context->pulse = std::make_shared<BusPulse>(bus_, service, context->relay);
    if (!found)
        co_return *reading;

    const auto element = std::make_shared<const TextElement>(*found, toolkit, budget);
    reading->element = element;
    context->role = element->isPassword() ? FocusContext::Role::password : FocusContext::Role::text;
    if (!element->isPassword())
        co_await readText(reading, element, ahead);
    co_return *reading;
}

QCoro::Task<> AtspiFocusedText::prepare() {
    if (!bus_.isConnected())
        co_return;
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    const RunningApplicationRef front = frontmost_.application();
    const auto found = co_await finder_.find(front ? front->processId() : 0, budget);
    if (found)
        co_await applications_.toolkitOf(found->object.service, budget);
}

QCoro::Task<> AtspiFocusedText::readTerminal(Reading reading, std::optional<ElementTraits> found,
                                             CallBudgetRef budget) {
    const ObjectRef object = found ? found->object : ObjectRef();
    reading->element = std::make_shared<const TerminalElement>(object, budget);
    // Konsole counts its selection in columns of full lines and tells a text without them: what it
    // says on the bus is another place than the selection.
    std::optional<QString> selected = co_await frontmost_.primarySelection();
    if ((!selected || selected->isEmpty()) && !object.isNull())
        selected = co_await reader_.plainSelection(object, budget);
    if (!isBlank(selected))
        reading->selectedText = selected;
}

QCoro::Task<> AtspiFocusedText::readText(Reading reading, TextElementRef element,
                                         TextReader::AskedAheadRef ahead) {
    // Somebody who still changes the selection: the answer to one text must not replace another.
    constexpr int attempts = 3;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        const std::optional<QString> selected = co_await reader_.selectedText(element, ahead);
        reading->selectedText.reset();
        reading->selectedRange.reset();
        if (isBlank(selected))
            break;
        reading->selectedText = selected;
        reading->selectedRange = co_await rangeOf(element, ahead);
        if (element->memory.selection == element->memory.selectionOrCaret)
            co_return;
        ahead = std::make_shared<TextReader::AskedAhead>();
    }
    if (reading->selectedText) {
        if (reading->selectedRange)
            reading->selectedText = textAt(*element->captured, *reading->selectedRange);
        co_return;
    }
    const std::optional<QString> value = co_await reader_.value(element);
    if (isBlank(value))
        co_return;
    reading->value = value;
    element->captured = value;
    element->capturedSelection = element->memory.selectionOrCaret;
}

QCoro::Task<std::optional<TextRange>> AtspiFocusedText::selectedRange(FocusedElementRef element) {
    const auto text = std::dynamic_pointer_cast<const TextElement>(element);
    if (!text || text->isPassword())
        co_return std::nullopt;
    const CallBudget::Use use(text->budget);
    co_return co_await rangeOf(text, nullptr);
}

QCoro::Task<std::optional<TextRange>> AtspiFocusedText::rangeOf(TextElementRef text,
                                                                TextReader::AskedAheadRef ahead) {
    const std::optional<TextRange> range = co_await reader_.selectedRange(text, std::move(ahead));
    if (range) {
        text->captured = text->memory.value->text;
        text->capturedSelection = text->memory.selectionOrCaret;
    }
    co_return range;
}

QCoro::Task<Replacement> AtspiFocusedText::replace(FocusedElementRef element, TextRange range,
                                                   QString text) {
    const auto own = std::dynamic_pointer_cast<const TextElement>(element);
    if (!own || own->isPassword())
        co_return Replacement{Replacement::Outcome::refused, QStringLiteral("not a text to edit")};
    const CallBudget::Use use(own->budget);
    own->budget->renew();
    const TextWriter::Result written = co_await writer_.replace(own, range, text);
    const bool isDone = written.replacement.outcome == Replacement::Outcome::done;
    if (isDone && !written.isUserThere && own->memory.value) {
        const TextRange inserted{written.location, text.size()};
        co_await selector_.select(own, *own->memory.value, inserted);
    }
    co_return written.replacement;
}

QCoro::Task<PasteTarget> AtspiFocusedText::select(FocusedElementRef element, TextRange range) {
    const auto own = std::dynamic_pointer_cast<const TextElement>(element);
    if (!own || own->isPassword())
        co_return PasteTarget::unknown;
    const CallBudget::Use use(own->budget);
    own->budget->beginWait(CallBudget::pastePatience);
    // A text keeps its selection when another field of its window gets the keys.
    const bool losesKeys = co_await finder_.seesFocusBeside(own->traits.object, own->budget);
    if (losesKeys)
        co_return PasteTarget::another;
    const std::optional<DecodedText> shown = co_await reader_.wholeText(own);
    if (!shown)
        co_return PasteTarget::unknown;
    const QString captured = own->captured ? *own->captured : shown->text;
    const std::optional<TextRange> now = rangeAfterEdit(captured, shown->text, range);
    if (!now) {
        const bool fits = range.location + range.length <= shown->text.size();
        co_return fits ? PasteTarget::another : PasteTarget::gone;
    }
    const PasteTarget target =
        co_await selector_.select(own, *shown, *now, CallBudget::pastePatience);
    if (target != PasteTarget::another)
        co_return target;
    // A key that the user pressed just then has taken what was selected for the paste.
    const std::optional<DecodedText> after = co_await reader_.wholeText(own);
    const bool isTyped = after && !rangeAfterEdit(captured, after->text, range);
    co_return isTyped ? PasteTarget::gone : PasteTarget::another;
}

} // namespace quillmender::atspi
