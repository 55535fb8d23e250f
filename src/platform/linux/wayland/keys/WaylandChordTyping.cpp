#include "platform/linux/wayland/keys/WaylandChordTyping.h"

#include "platform/SignalWait.h"
#include "platform/linux/PasteText.h"
#include "platform/linux/terminal/CommandEditors.h"
#include "platform/linux/terminal/ProcessTable.h"
#include "platform/linux/terminal/TerminalForeground.h"
#include "platform/linux/wayland/ChordMoment.h"
#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/keys/CopyWatch.h"
#include "platform/linux/wayland/windows/WaylandFrontmostSource.h"
#include "platform/linux/wayland/windows/WaylandRunningApplication.h"

#include <QDeadlineTimer>

namespace quillmender::wayland {

using namespace std::chrono_literals;

namespace {

ChordResult withheld(const QString &reason) {
    return {ChordResult::Outcome::withheld, reason};
}

} // namespace

WaylandChordTyping::WaylandChordTyping(const WaylandChordSurroundings &around,
                                       const QObject *chords, Chord chord, ChordTarget into,
                                       std::shared_ptr<const WaylandRunningApplication> application)
    : around_(around),
      chords_(chords),
      chord_(chord),
      into_(std::move(into)),
      application_(std::move(application)),
      text_(std::dynamic_pointer_cast<PasteText>(into_.text)) {
    const auto focus = std::dynamic_pointer_cast<const FocusContext>(into_.context);
    const auto role = focus ? focus->role : FocusContext::Role::unknown;
    relay_ = focus ? focus->relay : nullptr;
    pulse_ = focus ? focus->pulse : nullptr;
    isSecret_ = role == FocusContext::Role::password;
    isTerminal_ =
        role == FocusContext::Role::terminal || around_.frontmost.isTerminalWindow(*application_);
}

/// How long a compositor may take to bring an application to the front. A paste is worth more: the
/// user has waited for its text already.
std::chrono::milliseconds WaylandChordTyping::patience() const {
    return isPaste() ? 1000ms : 300ms;
}

TypedKeys WaylandChordTyping::keys() const {
    if (!isPaste())
        return TypedKeys::controlC;
    return isTerminal_ ? TypedKeys::shiftInsert : TypedKeys::controlV;
}

QString WaylandChordTyping::name() const {
    return QStringLiteral("window %1 (%2)")
        .arg(QString::fromLatin1(application_->windowId()), application_->toplevel().appId);
}

QCoro::Task<ChordResult> WaylandChordTyping::run() {
    Obstacle obstacle = forbids();
    if (!obstacle)
        obstacle = co_await reachTarget();
    if (!obstacle)
        obstacle = co_await prepareText();
    if (!obstacle)
        obstacle = co_await waitForServer();
    if (!obstacle)
        obstacle = isOver();
    if (obstacle)
        co_return withheld(*obstacle);
    co_return co_await type();
}

Obstacle WaylandChordTyping::forbids() const {
    const QString &appId = application_->toplevel().appId;
    if (isCommandEditor(appId) || isCommandEditor(appId.section(u'.', -1)))
        return name() + QStringLiteral(" has other keys");
    if (!isPaste() && isTerminal_)
        return QStringLiteral("the copy chord is an interrupt in a terminal");
    if (!isPaste() && isSecret_)
        return QStringLiteral("the focus is in a password field");
    if (isPaste() && !into_.text)
        return QStringLiteral("nothing was lent that could be pasted");
    if (isPaste() && isTerminal_ && !text_)
        return QStringLiteral("what was lent cannot be made a text for a terminal");
    return std::nullopt;
}

Obstacle WaylandChordTyping::isOver() const {
    if (!chords_)
        return QStringLiteral("nothing is typed any more");
    return std::nullopt;
}

QCoro::Task<Obstacle> WaylandChordTyping::reachTarget() {
    const bool isInFront = co_await comesToTheFront();
    if (Obstacle over = isOver())
        co_return over;
    if (!isInFront)
        co_return name() + QStringLiteral(" did not come to the front");
    if (relay_) {
        const bool isClear = co_await relay_->waitUntilPassed(patience());
        if (!isClear)
            co_return QStringLiteral("keys for ") + name() + QStringLiteral(" are stuck");
    }
    co_return co_await findAttention();
}

QCoro::Task<Obstacle> WaylandChordTyping::findAttention() const {
    // What has passed a relay has had its answer.
    if (!pulse_ || relay_)
        co_return std::nullopt;
    const bool attends = co_await pulse_->beats(patience());
    if (!attends)
        co_return name() + QStringLiteral(" does not attend to its events");
    co_return std::nullopt;
}

QCoro::Task<bool> WaylandChordTyping::comesToTheFront() const {
    const QDeadlineTimer deadline(patience(), Qt::PreciseTimer);
    while (chords_ && !around_.toplevels.hasKeyboard(application_->windowId())) {
        if (deadline.hasExpired())
            co_return false;
        // What a window of this program's lets go of is not always reported.
        co_await SignalWait(&around_.toplevels, &Toplevels::changed, 20ms);
    }
    co_return true;
}

QCoro::Task<Obstacle> WaylandChordTyping::prepareText() {
    if (!isPaste() || !isTerminal_)
        co_return std::nullopt;
    const auto takesLineEnds = [application = application_] {
        const qint64 emulator = application->processId();
        return emulator != 0 && hasEditorsOnly(emulator);
    };
    co_return co_await text_->lendToTerminal(takesLineEnds);
}

QCoro::Task<Obstacle> WaylandChordTyping::waitForServer() {
    if (!isPaste() || !application_->toplevel().isOfXServer || !around_.waitForBridge)
        co_return std::nullopt;
    const auto wait = around_.waitForBridge;
    const bool hasHeard = co_await wait(patience());
    if (!hasHeard)
        co_return QStringLiteral("the X server has not heard of the text");
    co_return std::nullopt;
}

Obstacle WaylandChordTyping::speaksAgainst() const {
    if (Obstacle over = isOver())
        return over;
    if (!around_.toplevels.hasKeyboard(application_->windowId()))
        return name() + QStringLiteral(" is not in front any more");
    if (application_->processId() != 0 && isStopped(application_->processId()))
        return name() + QStringLiteral(" is stopped");
    if (isPaste() && text_ && !text_->isOffered())
        return QStringLiteral("the pasteboard was replaced meanwhile");
    if (isPaste() && isTerminal_ && !text_->isLentToTerminal())
        return QStringLiteral("somebody else took a selection");
    return std::nullopt;
}

QCoro::Task<ChordResult> WaylandChordTyping::type() {
    Obstacle obstacle;
    const auto isStillMeant = [this, &obstacle] {
        obstacle = speaksAgainst();
        return !obstacle;
    };
    const auto beforeLast = [this] {
        around_.moment.note();
        if (!isPaste())
            around_.copies.start(application_->processId());
        if (isPaste() && text_)
            text_->noteChord();
    };
    const TypedOutcome outcome = co_await around_.typing.type(keys(), isStillMeant, beforeLast);
    if (outcome.isTyped && !isPaste() && !isOver())
        around_.copies.follow(pulse_);
    if (outcome.isTyped)
        co_return ChordResult{ChordResult::Outcome::typed};
    if (obstacle)
        co_return withheld(*obstacle);
    if (outcome.isUnavailable)
        co_return ChordResult{ChordResult::Outcome::unavailable, outcome.reason};
    co_return withheld(outcome.reason);
}

} // namespace quillmender::wayland
