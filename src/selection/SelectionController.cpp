#include "selection/SelectionController.h"

#include "model/AppFailure.h"
#include "model/TextRules.h"
#include "selection/CharacterBoundary.h"
#include "selection/UncertainReplacement.h"

namespace quillmender {

namespace {

using namespace std::chrono_literals;

constexpr auto activationDelay = 120ms;
constexpr auto copyPollInterval = 50ms;
constexpr int copyPollAttempts = 6;
constexpr auto pasteDelay = 160ms;
// A slow owner of the pasteboard does not keep the user from their panel.
constexpr auto snapshotLimit = 1000ms;
constexpr auto pasteLimit = 1000ms;

bool isBlank(const QString &text) {
    return QStringView(text).trimmed().isEmpty();
}

} // namespace

SelectionController::SelectionController(PasteboardManager &pasteboardManager,
                                         Accessibility &accessibility, Workspace &workspace,
                                         Clock &clock)
    : pasteboardManager_(pasteboardManager),
      accessibility_(accessibility),
      workspace_(workspace),
      clock_(clock) {}

QCoro::Task<SelectionSessionRef> SelectionController::captureSelection() {
    const quint64 capture = ++latestCapture_;
    const auto session = std::make_shared<SelectionSession>();
    session->sourceApp = workspace_.frontmostApplication();
    if (!session->sourceApp)
        throw AppFailure::missingFrontmostApplication();

    co_await snapshotPasteboard(session);
    const quint64 turn = lease_.turn();
    const bool isFocusElsewhere = co_await findFocus(session);

    if (session->focusedElement) {
        const auto selected = co_await stringAttribute(QLatin1String(attribute::selectedText),
                                                       session->focusedElement);
        if (selected && !isBlank(*selected)) {
            session->selectedText = trimmed(*selected);
            session->selectedRange = co_await selectedRange(session->focusedElement);
            session->acquisitionMethod = SelectionAcquisitionMethod::accessibility;
            session->captureScope = CaptureScope::selection;
            co_return session;
        }

        const auto value =
            co_await stringAttribute(QLatin1String(attribute::value), session->focusedElement);
        if (value && !isBlank(*value)) {
            session->selectedText = *value;
            session->selectedRange = TextRange{0, value->size()};
            session->acquisitionMethod = SelectionAcquisitionMethod::accessibility;
            session->captureScope = CaptureScope::fullField;
            co_return session;
        }
    }

    // Somebody who has pressed the hot key again waits for another window's text.
    if (capture != latestCapture_)
        throw CancellationError();
    const PasteboardLease::Held lease = co_await lease_.acquire();
    // What others did with it in between counts as no copy, and is not to be undone. And from here
    // on everything has to be there that is to be put back.
    if (lease_.turn() != turn + 1 || !session->originalPasteboard.isComplete)
        session->originalPasteboard = co_await pasteboardManager_.snapshot();
    session->selectedText = co_await copySelection(session, isFocusElsewhere);
    if (session->selectedText.isEmpty())
        throw AppFailure::noSelectionFound();
    if (session->focusedElement)
        session->selectedRange = co_await selectedRange(session->focusedElement);
    session->acquisitionMethod = SelectionAcquisitionMethod::clipboard;
    session->captureScope = CaptureScope::selection;
    co_return session;
}

QCoro::Task<> SelectionController::snapshotPasteboard(NewSession session) {
    const PasteboardLease::Held lease = co_await lease_.acquire();
    session->originalPasteboard = co_await pasteboardManager_.snapshotWithin(snapshotLimit);
}

/// True when another application or window than the session's has the focus.
QCoro::Task<bool> SelectionController::findFocus(NewSession session) {
    const AccessibilityElementRef systemWide = accessibility_.createSystemWide();
    const AccessibilityElementRef element = co_await focusedElement(systemWide);
    if (element && !element->isOf(session->sourceApp))
        co_return true;
    session->focusedElement = element;
    session->chordContext = accessibility_.chordContext(systemWide);
    co_return false;
}

QCoro::Task<AccessibilityElementRef>
SelectionController::focusedElement(AccessibilityElementRef systemWide) {
    const AttributeResult result = co_await accessibility_.copyAttributeValue(
        std::move(systemWide), QLatin1String(attribute::focusedElement));
    const auto *element = std::get_if<AccessibilityElementRef>(&result.value);
    if (result.error != AccessibilityError::success || !element)
        co_return AccessibilityElementRef();
    co_return *element;
}

QCoro::Task<std::optional<QString>>
SelectionController::stringAttribute(QString name, AccessibilityElementRef element) {
    const AttributeResult result =
        co_await accessibility_.copyAttributeValue(std::move(element), std::move(name));
    const auto *text = std::get_if<QString>(&result.value);
    if (result.error != AccessibilityError::success || !text)
        co_return std::nullopt;
    co_return *text;
}

QCoro::Task<std::optional<TextRange>>
SelectionController::selectedRange(AccessibilityElementRef element) {
    const AttributeResult result = co_await accessibility_.copyAttributeValue(
        std::move(element), QLatin1String(attribute::selectedTextRange));
    const auto *range = std::get_if<TextRange>(&result.value);
    if (result.error != AccessibilityError::success || !range)
        co_return std::nullopt;
    co_return *range;
}

QCoro::Task<QString> SelectionController::copySelection(NewSession session, bool isFocusElsewhere) {
    workspace_.activate(session->sourceApp);
    co_await clock_.sleepFor(activationDelay);
    if (isFocusElsewhere)
        co_await findFocus(session);
    const KeystrokeResult keystroke = co_await pasteboardManager_.postCommandKeystroke(
        session->sourceApp, keycode::c, session->chordContext);
    if (keystroke == KeystrokeResult::failed)
        throw AppFailure::replacementFailed();
    if (keystroke == KeystrokeResult::withheld)
        co_return {};

    QString candidate;
    std::exception_ptr error;
    try {
        candidate = co_await copiedText(session->originalPasteboard.changeCount);
    } catch (...) {
        error = std::current_exception();
    }
    pasteboardManager_.restore(session->originalPasteboard);
    if (error)
        std::rethrow_exception(error);
    co_return candidate;
}

QCoro::Task<QString> SelectionController::copiedText(qint64 changeCount) {
    const bool changed = co_await waitForPasteboardChange(changeCount);
    if (!changed)
        co_return {};
    const auto text = co_await pasteboardManager_.pasteboard().string();
    co_return trimmed(text.value_or(QString()));
}

QCoro::Task<bool> SelectionController::waitForPasteboardChange(qint64 changeCount) {
    for (int attempt = 0; attempt < copyPollAttempts; ++attempt) {
        co_await clock_.sleepFor(copyPollInterval);
        if (pasteboardManager_.pasteboard().changeCount() != changeCount)
            co_return true;
    }
    co_return false;
}

QCoro::Task<bool> SelectionController::replaceViaAccessibility(SelectionSessionRef session,
                                                               QString replacement) {
    if (!session->focusedElement || !session->selectedRange)
        co_return false;
    const TextRange range = *session->selectedRange;
    const auto current =
        co_await stringAttribute(QLatin1String(attribute::value), session->focusedElement);
    if (!current || !fallsOnCharacterBoundaries(*current, range))
        co_return false;

    QString changed = *current;
    changed.replace(range.location, range.length, replacement);
    const AccessibilityError written = co_await accessibility_.setAttributeValue(
        session->focusedElement, QLatin1String(attribute::value), AccessibilityValue(changed));
    if (written == AccessibilityError::cannotComplete)
        throw UncertainReplacement();
    if (written != AccessibilityError::success)
        co_return false;

    const TextRange inserted{range.location, replacement.size()};
    co_await accessibility_.setAttributeValue(session->focusedElement,
                                              QLatin1String(attribute::selectedTextRange),
                                              AccessibilityValue(inserted));
    co_return true;
}

QCoro::Task<> SelectionController::performPasteReplacement(SelectionSessionRef session,
                                                           QString replacement) {
    const PasteboardLease::Held lease = co_await lease_.acquire();
    PasteboardSnapshot original = session->originalPasteboard;
    if (!original.isComplete)
        original = co_await pasteboardManager_.snapshot();
    bool pasted = false;
    try {
        pasted = co_await paste(session, std::move(replacement));
    } catch (...) {
        pasted = false;
    }
    pasteboardManager_.restore(original);
    if (!pasted)
        throw AppFailure::replacementFailed();
}

/// False when a paste would put the answer beside the captured text.
QCoro::Task<bool> SelectionController::selectWhatGoes(SelectionSessionRef session) {
    if (!session->focusedElement || !session->selectedRange)
        co_return true;
    const PasteTarget target =
        co_await accessibility_.selectBeforePaste(session->focusedElement, *session->selectedRange);
    // The user selected a part, and nobody says that it is not selected still; a whole field was
    // captured because nothing was. What is gone cannot be doubled.
    const bool isUsersOwn = session->captureScope == CaptureScope::selection;
    co_return target == PasteTarget::selected || target == PasteTarget::gone ||
        (target == PasteTarget::unknown && isUsersOwn);
}

QCoro::Task<bool> SelectionController::paste(SelectionSessionRef session, QString replacement) {
    Pasteboard &pasteboard = pasteboardManager_.pasteboard();
    pasteboard.clearContents();
    pasteboard.setString(replacement);

    workspace_.activate(session->sourceApp);
    co_await clock_.sleepFor(activationDelay);
    const bool replaces = co_await selectWhatGoes(session);
    if (!replaces)
        co_return false;
    const KeystrokeResult keystroke = co_await pasteboardManager_.postCommandKeystroke(
        session->sourceApp, keycode::v, session->chordContext);
    if (keystroke != KeystrokeResult::posted)
        co_return false;

    bool isCancelled = false;
    try {
        co_await clock_.sleepFor(pasteDelay);
    } catch (...) {
        isCancelled = true;
    }
    // Cancelled or not: what was told to paste must not find the user's old contents there.
    const bool isRead = co_await pasteboard.stringWasRead(pasteLimit - pasteDelay);
    co_return isRead && !isCancelled;
}

} // namespace quillmender
