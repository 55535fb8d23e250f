#include "platform/linux/x11/selection/ParallelConversions.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/Xcb.h"

#include <xcb/xfixes.h>

#include <algorithm>

namespace quillmender::x11 {

ParallelConversions::ParallelConversions(X11Connection &connection, xcb_atom_t selection,
                                         const TransferBudget &budget, const TransferBounds &bounds)
    : QObject(&connection),
      connection_(connection),
      selection_(selection),
      budget_(budget),
      bounds_(bounds) {
    deadline_.setSingleShot(true);
    deadline_.setTimerType(Qt::PreciseTimer);
    connect(&deadline_, &QTimer::timeout, this, &ParallelConversions::handleDeadline);
    connect(&connection_, &X11Connection::eventReceived, this, &ParallelConversions::handleEvent);
    connect(&connection_, &X11Connection::lost, this, &ParallelConversions::settle);
}

ParallelConversions::~ParallelConversions() {
    for (auto &conversion : conversions_) {
        conversion->disconnect(this);
        if (!conversion->isAnswered())
            SelectionConversion::abandon(std::move(conversion));
    }
}

void ParallelConversions::request(const QList<xcb_atom_t> &targets, xcb_timestamp_t time) {
    isSettled_ = false;
    for (const xcb_atom_t target : targets) {
        conversions_.push_back(std::make_unique<SelectionConversion>(
            connection_, selection_, target, time, bounds_.perTarget));
        connect(conversions_.back().get(), &SelectionConversion::advanced, this,
                &ParallelConversions::handleAdvance);
    }
    xcb_flush(connection_.xcb());
    deadline_.start(targets.isEmpty() ? std::chrono::milliseconds(0) : budget_.remaining());
}

void ParallelConversions::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) != connection_.fixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY)
        return;
    const auto &change = eventCast<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection != selection_ || change.window != connection_.root())
        return;
    const bool isSet = change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    // A file manager gives cut files up while it hands them over: its answers are under way.
    isGivenUp_ = isSet && change.owner == XCB_WINDOW_NONE;
    isOwnerReplaced_ = isSet && !isGivenUp_;
    if (isGivenUp_)
        waitForAnswers();
    else
        settle();
}

void ParallelConversions::waitForAnswers() {
    constexpr std::chrono::milliseconds afterGivingUp(200);
    const std::chrono::milliseconds remaining = budget_.remaining();
    // Owners that are quick enough would keep a timer from its turn.
    if (remaining <= std::chrono::milliseconds(0))
        return handleDeadline();
    deadline_.start(isGivenUp_ ? std::min(remaining, afterGivingUp) : remaining);
}

qsizetype ParallelConversions::received() const {
    qsizetype sum = 0;
    for (const auto &conversion : conversions_)
        sum += conversion->received();
    return sum;
}

bool ParallelConversions::dropLargest() {
    SelectionConversion *largest = nullptr;
    for (const auto &conversion : conversions_) {
        if (!conversion->isFinished() && (!largest || conversion->received() > largest->received()))
            largest = conversion.get();
    }
    if (largest)
        largest->drop();
    return largest != nullptr;
}

void ParallelConversions::handleAdvance() {
    while (received() > bounds_.total && dropLargest())
        qCWarning(x11Log, "a selection's owner sends without end");
    const auto answers =
        std::ranges::count_if(conversions_, [](const auto &each) { return each->isFinished(); });
    budget_.noteProgress(answers, received());
    if (answers == std::ssize(conversions_))
        settle();
    else
        waitForAnswers();
}

void ParallelConversions::handleDeadline() {
    constexpr std::chrono::milliseconds none(0);
    // Timers may be a little early.
    if (!isGivenUp_ && budget_.remaining() > none)
        return waitForAnswers();
    isCutShort_ = !isGivenUp_ || budget_.untilLimit() <= none;
    settle();
}

void ParallelConversions::settle() {
    if (isSettled_)
        return;
    isSettled_ = true;
    deadline_.stop();
    Q_EMIT settled();
}

} // namespace quillmender::x11
