#include "selection/SelectionController.h"

#include "model/AppFailure.h"
#include "model/TextRules.h"
#include "selection/UncertainReplacement.h"

#include <QLoggingCategory>

namespace quillmender {

namespace {

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(log, "quillmender.session", QtWarningMsg)

constexpr auto activationDelay = 120ms;
constexpr auto copyPollInterval = 50ms;
constexpr int copyPollAttempts = 6;
constexpr auto pasteDelay = 160ms;
// A slow owner of the pasteboard does not keep the user from their panel.
constexpr auto snapshotLimit = 1000ms;
constexpr auto pasteLimit = 1000ms;

} // namespace

SelectionController::SelectionController(PasteboardManager &pasteboardManager,
                                         FocusedText &focusedText, Workspace &workspace,
                                         Clock &clock)
    : pasteboardManager_(pasteboardManager),
      focusedText_(focusedText),
      workspace_(workspace),
      clock_(clock) {}

QCoro::Task<SelectionSessionRef> SelectionController::captureSelection(MakeWay makeWay) {
    const quint64 capture = ++latestCapture_;
    const auto session = std::make_shared<SelectionSession>();
    session->sourceApp = workspace_.frontmostApplication();
    std::optional<FocusReading> reading;
    if (!session->sourceApp) {
        // Not every window system says who is in front. Then accessibility may.
        reading = co_await focusedText_.read(nullptr);
        session->sourceApp = reading->application;
    }
    if (!session->sourceApp)
        throw AppFailure::missingFrontmostApplication();

    co_await snapshotPasteboard(session);
    const quint64 turn = lease_.turn();
    if (!reading)
        reading = co_await focusedText_.read(session->sourceApp);
    session->focusedElement = reading->element;
    session->chordContext = reading->chordContext;

    if (reading->selectedText) {
        session->selectedText = trimmed(*reading->selectedText);
        session->selectedRange = reading->selectedRange;
        session->acquisitionMethod = SelectionAcquisitionMethod::accessibility;
        session->captureScope = CaptureScope::selection;
        co_return session;
    }
    if (reading->value) {
        session->selectedText = *reading->value;
        session->selectedRange = TextRange{0, reading->value->size()};
        session->acquisitionMethod = SelectionAcquisitionMethod::accessibility;
        session->captureScope = CaptureScope::fullField;
        co_return session;
    }

    // Somebody who has pressed the hot key again waits for another window's text.
    if (capture != latestCapture_)
        throw CancellationError();
    const Lease lease = co_await lease_.acquire();
    // What others did with it in between counts as no copy, and is not to be undone. And from here
    // on everything has to be there that is to be put back.
    if (lease_.turn() != turn + 1 || !session->originalPasteboard.isComplete)
        session->originalPasteboard = co_await pasteboardManager_.snapshot();
    session->selectedText =
        co_await copySelection(session, reading->isElsewhere, std::move(makeWay));
    if (session->selectedText.isEmpty())
        throw AppFailure::noSelectionFound();
    if (session->focusedElement)
        session->selectedRange = co_await focusedText_.selectedRange(session->focusedElement);
    session->acquisitionMethod = SelectionAcquisitionMethod::clipboard;
    session->captureScope = CaptureScope::selection;
    co_return session;
}

QCoro::Task<> SelectionController::snapshotPasteboard(NewSession session) {
    const Lease lease = co_await lease_.acquire();
    session->originalPasteboard = co_await pasteboardManager_.snapshotWithin(snapshotLimit);
}

QCoro::Task<QString> SelectionController::copySelection(NewSession session, bool isFocusElsewhere,
                                                        MakeWay makeWay) {
    const std::shared_ptr<void> way = makeWay ? makeWay() : nullptr;
    workspace_.activate(session->sourceApp);
    co_await clock_.sleepFor(activationDelay);
    if (isFocusElsewhere) {
        const FocusReading reading = co_await focusedText_.read(session->sourceApp);
        session->focusedElement = reading.element;
        session->chordContext = reading.chordContext;
    }
    ChordTarget target;
    target.application = session->sourceApp;
    target.context = session->chordContext;
    const ChordResult copied =
        co_await pasteboardManager_.postCommandKeystroke(Chord::copy, std::move(target));
    if (copied.outcome != ChordResult::Outcome::typed)
        qCInfo(log, "not copied: %s", qUtf8Printable(copied.reason));
    if (copied.outcome == ChordResult::Outcome::unavailable)
        throw AppFailure::replacementFailed();
    if (copied.outcome == ChordResult::Outcome::withheld)
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
    if (!changed) {
        qCInfo(log, "not copied: the pasteboard did not change");
        co_return {};
    }
    const auto text = co_await pasteboardManager_.pasteboard().string();
    const QString copied = trimmed(text.value_or(QString()));
    if (copied.isEmpty())
        qCInfo(log, "not copied: what came to the pasteboard is no text");
    co_return copied;
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
    const Replacement written = co_await focusedText_.replace(
        session->focusedElement, *session->selectedRange, std::move(replacement));
    if (written.outcome == Replacement::Outcome::done)
        co_return true;
    qCInfo(log, "not written by accessibility: %s", qUtf8Printable(written.reason));
    if (written.outcome == Replacement::Outcome::uncertain)
        throw UncertainReplacement();
    co_return false;
}

QCoro::Task<> SelectionController::performPasteReplacement(SelectionSessionRef session,
                                                           QString replacement) {
    const Lease lease = co_await lease_.acquire();
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
        co_await focusedText_.select(session->focusedElement, *session->selectedRange);
    // The user selected a part, and nobody says that it is not selected still; a whole field was
    // captured because nothing was. What is gone cannot be doubled.
    const bool isUsersOwn = session->captureScope == CaptureScope::selection;
    if (target == PasteTarget::gone)
        qCInfo(log, "the captured text is gone: the answer goes where the caret is");
    co_return target == PasteTarget::selected || target == PasteTarget::gone ||
        (target == PasteTarget::unknown && isUsersOwn);
}

QCoro::Task<bool> SelectionController::paste(SelectionSessionRef session, QString replacement) {
    ChordTarget target;
    target.application = session->sourceApp;
    target.context = session->chordContext;
    target.text = pasteboardManager_.pasteboard().lend(replacement, session->sourceApp);
    if (!target.text) {
        qCInfo(log, "not pasted: the pasteboard does not take the text");
        co_return false;
    }
    const LentTextRef lent = target.text;

    workspace_.activate(session->sourceApp);
    co_await clock_.sleepFor(activationDelay);
    const bool replaces = co_await selectWhatGoes(session);
    if (!replaces) {
        qCInfo(log, "not pasted: the captured text is not seen to be selected");
        co_return false;
    }
    const ChordResult typed =
        co_await pasteboardManager_.postCommandKeystroke(Chord::paste, std::move(target));
    if (typed.outcome != ChordResult::Outcome::typed) {
        qCInfo(log, "not pasted: %s", qUtf8Printable(typed.reason));
        co_return false;
    }

    bool isCancelled = false;
    try {
        co_await clock_.sleepFor(pasteDelay);
    } catch (...) {
        isCancelled = true;
    }
    // Cancelled or not: what was told to paste must not find the user's old contents there.
    const bool isRead = co_await lent->wasRead(pasteLimit - pasteDelay);
    if (!isRead)
        qCInfo(log, "not pasted: nobody asked for the text");
    co_return isRead && !isCancelled;
}

} // namespace quillmender
