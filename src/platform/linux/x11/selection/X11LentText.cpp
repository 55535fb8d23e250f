#include "platform/linux/x11/selection/X11LentText.h"

#include "platform/SignalWait.h"
#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/selection/OwnSelections.h"

#include <algorithm>
#include <utility>

namespace quillmender::x11 {

using namespace std::chrono_literals;

X11LentText::X11LentText(OwnSelections &selections, xcb_window_t reader)
    : selections_(&selections),
      readers_(selections.connection),
      terminal_(selections, reader),
      isKept_(selections.reach == SelectionReach::server) {
    connect(&selections.clipboard, &SelectionOwner::served, this,
            &X11LentText::handleClipboardServed);
    connect(&selections.primary.owner(), &SelectionOwner::served, this, &X11LentText::handleServed);
}

QCoro::Task<Obstacle> X11LentText::lendToTerminal(TerminalLoan::TakesLineEnds takesLineEnds) {
    const auto self = shared_from_this();
    // It is another text from here on, which is new once more.
    if (selections_)
        isKept_ = selections_->reach == SelectionReach::server;
    co_return co_await terminal_.lend(std::move(takesLineEnds));
}

void X11LentText::handleClipboardServed(xcb_window_t requestor, SelectionOwner::Moment askedAt) {
    if (std::exchange(isKept_, true))
        handleServed(requestor, askedAt);
}

void X11LentText::handleServed(xcb_window_t requestor, SelectionOwner::Moment askedAt) {
    if (readers_.add(requestor, askedAt))
        Q_EMIT changed();
}

QCoro::Task<bool> X11LentText::wasRead(std::chrono::milliseconds limit) {
    const auto self = shared_from_this();
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    if (isOffered() && !readers_.reading().isBegun())
        co_await SignalWait(this, &X11LentText::changed, limit);
    if (readers_.reading().isBegun()) {
        co_await readingIsOver(deadline);
        co_return true;
    }
    if (!isOffered())
        co_return wasReadEarly_;
    if (refuseLateReader())
        co_return false;
    co_return readers_.isReadEarly();
}

QCoro::Task<> X11LentText::readingIsOver(QDeadlineTimer deadline) {
    while (isOffered() && !deadline.hasExpired()) {
        const auto rest = readers_.reading().rest(std::chrono::steady_clock::now());
        if (rest <= 0ms)
            co_return;
        const std::chrono::milliseconds allowed(deadline.remainingTime());
        co_await SignalWait(this, &X11LentText::changed, std::max(std::min(rest, allowed), 1ms));
    }
}

bool X11LentText::refuseLateReader() {
    if (selections_->reach == SelectionReach::session) {
        refuseEverybody();
        return true;
    }
    const xcb_window_t window = readers_.window();
    if (!selections_->late.isLate(window))
        return false;
    qCInfo(x11Log, "window 0x%x did not attend to the paste", window);
    selections_->late.refuse(window);
    return true;
}

// What was put there by others, or given back to them, is not touched.
void X11LentText::refuseEverybody() {
    if (terminal_.isLent())
        selections_->primary.owner().exchange({});
    selections_->clipboard.exchange({});
}

void X11LentText::end() {
    if (!isOffered())
        return;
    // What replaces it is not for an application that comes round to the paste only now.
    if (!readers_.reading().isBegun() && !refuseLateReader())
        wasReadEarly_ = readers_.isReadEarly();
    selections_->clipboard.disconnect(this);
    selections_->primary.owner().disconnect(this);
    terminal_.end();
    selections_ = nullptr;
    Q_EMIT changed();
}

} // namespace quillmender::x11
