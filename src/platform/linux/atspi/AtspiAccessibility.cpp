#include "platform/linux/atspi/AtspiAccessibility.h"

#include "platform/linux/atspi/RegistryDetour.h"

namespace quillmender {

namespace {

constexpr int trustDeadlineMs = 250;

bool isNamed(const QString &attribute, const char *name) {
    return attribute == QLatin1String(name);
}

AttributeResult failed(AccessibilityError error) {
    return {error, {}};
}

bool isSame(const RunningApplicationRef &one, const RunningApplicationRef &other) {
    return one && other ? one->isSame(*other) : one == other;
}

} // namespace

AtspiAccessibility::AtspiAccessibility(FrontmostSource &frontmost, const QDBusConnection &session)
    : frontmost_(frontmost),
      bus_(session) {}

bool AtspiAccessibility::isProcessTrusted() {
    return bus_.isEnabledAndAnswers(QDeadlineTimer(trustDeadlineMs));
}

bool AtspiAccessibility::isProcessTrustedWithPrompt() {
    bus_.enable(QDeadlineTimer(trustDeadlineMs));
    return isProcessTrusted();
}

AccessibilityElementRef AtspiAccessibility::createSystemWide() {
    return std::make_shared<const SystemWideElement>();
}

ChordContextRef AtspiAccessibility::chordContext(const AccessibilityElementRef &systemWide) {
    const auto own = std::dynamic_pointer_cast<const SystemWideElement>(systemWide);
    return own ? own->record : nullptr;
}

QCoro::Task<AttributeResult> AtspiAccessibility::copyAttributeValue(AccessibilityElementRef element,
                                                                    QString attribute) {
    if (const auto systemWide = std::dynamic_pointer_cast<const SystemWideElement>(element)) {
        if (!isNamed(attribute, attribute::focusedElement))
            co_return failed(AccessibilityError::attributeUnsupported);
        const Budget::Use use(systemWide->budget);
        co_return co_await focusedElement(systemWide);
    }
    if (const auto terminal = std::dynamic_pointer_cast<const TerminalElement>(element)) {
        const Budget::Use use(terminal->budget);
        co_return co_await terminalAttribute(terminal, attribute);
    }
    if (const auto text = std::dynamic_pointer_cast<const TextElement>(element)) {
        const Budget::Use use(text->budget);
        co_return co_await textAttribute(text, attribute);
    }
    co_return failed(AccessibilityError::invalidElement);
}

QCoro::Task<AttributeResult> AtspiAccessibility::focusedElement(SystemWideRef systemWide) {
    const BudgetRef &budget = systemWide->budget;
    const auto record = std::make_shared<FocusRecord>();
    systemWide->record = record;
    const RunningApplicationRef application = frontmost_.application();
    const bool inTerminal = frontmost_.isTerminal();
    std::optional<Traits> found;
    if (bus_.isConnected())
        found = co_await finder_.find(budget);
    // What has the focus now may be in another window than what had it then.
    if (!isSame(application, frontmost_.application()))
        co_return failed(AccessibilityError::noValue);
    const bool isEntryOfTerminal = found && inTerminal && found->role != atspi_role::terminal &&
                                   found->states.has(State::editable);
    if ((inTerminal && !isEntryOfTerminal) || (found && found->role == atspi_role::terminal)) {
        record->role = FocusRecord::Role::terminal;
        const ObjectRef object = found ? found->object : ObjectRef();
        const AccessibilityElementRef terminal =
            std::make_shared<const TerminalElement>(application, object, budget);
        co_return AttributeResult{AccessibilityError::success, terminal};
    }
    QString service;
    if (found)
        service = found->object.service;
    else
        service = co_await finder_.serviceInFront(budget);
    const Toolkit toolkit = co_await applications_.toolkitOf(service, budget);
    if (toolkit == Toolkit::qt)
        record->detour = std::make_shared<RegistryDetour>(bus_, service);
    if (!found)
        co_return failed(AccessibilityError::noValue);

    const auto element = std::make_shared<const TextElement>(application, *found, toolkit, budget);
    record->role = element->isPassword() ? FocusRecord::Role::password : FocusRecord::Role::text;
    co_return AttributeResult{AccessibilityError::success, AccessibilityElementRef(element)};
}

QCoro::Task<AttributeResult>
AtspiAccessibility::terminalAttribute(std::shared_ptr<const TerminalElement> terminal,
                                      QString attribute) {
    if (!isNamed(attribute, attribute::selectedText))
        co_return failed(AccessibilityError::attributeUnsupported);
    // Konsole counts its selection in columns of full lines and tells a text without them: what it
    // says on the bus is another place than the selection.
    const std::optional<QString> primary = co_await frontmost_.primarySelection();
    if (primary && !primary->isEmpty())
        co_return AttributeResult{AccessibilityError::success, *primary};
    if (terminal->object.isNull())
        co_return failed(AccessibilityError::noValue);
    const QString selected = co_await reader_.plainSelection(terminal->object, terminal->budget);
    if (selected.isEmpty())
        co_return failed(AccessibilityError::noValue);
    co_return AttributeResult{AccessibilityError::success, selected};
}

QCoro::Task<AttributeResult> AtspiAccessibility::textAttribute(TextElementRef element,
                                                               QString attribute) {
    if (element->isPassword())
        co_return failed(AccessibilityError::noValue);
    if (isNamed(attribute, attribute::selectedText))
        co_return co_await reader_.selectedText(element);
    if (isNamed(attribute, attribute::value))
        co_return co_await reader_.value(element);
    if (isNamed(attribute, attribute::selectedTextRange))
        co_return co_await reader_.selectedRange(element);
    co_return failed(AccessibilityError::attributeUnsupported);
}

QCoro::Task<AccessibilityError>
AtspiAccessibility::setAttributeValue(AccessibilityElementRef element, QString attribute,
                                      AccessibilityValue value) {
    const auto text = std::dynamic_pointer_cast<const TextElement>(element);
    if (!text || text->isPassword())
        co_return AccessibilityError::attributeUnsupported;
    const Budget::Use use(text->budget);
    text->budget->renew();
    if (isNamed(attribute, attribute::value)) {
        const auto *string = std::get_if<QString>(&value);
        if (string == nullptr)
            co_return AccessibilityError::illegalArgument;
        co_return co_await writer_.write(text, *string);
    }
    if (isNamed(attribute, attribute::selectedTextRange)) {
        const auto *range = std::get_if<TextRange>(&value);
        if (range == nullptr)
            co_return AccessibilityError::illegalArgument;
        co_return co_await selector_.select(text, *range);
    }
    co_return AccessibilityError::attributeUnsupported;
}

QCoro::Task<PasteTarget> AtspiAccessibility::selectBeforePaste(AccessibilityElementRef element,
                                                               TextRange range) {
    const auto text = std::dynamic_pointer_cast<const TextElement>(element);
    if (!text || text->isPassword())
        co_return PasteTarget::unknown;
    const Budget::Use use(text->budget);
    text->budget->beginWait(Budget::pastePatience);
    const AccessibilityError selected =
        co_await selector_.select(text, range, Budget::pastePatience);
    switch (selected) {
    case AccessibilityError::success:
        co_return PasteTarget::selected;
    case AccessibilityError::cannotComplete:
        co_return PasteTarget::unknown;
    case AccessibilityError::illegalArgument:
        co_return PasteTarget::gone;
    default:
        co_return PasteTarget::another;
    }
}

} // namespace quillmender
