#include "platform/linux/x11/ConversionGroup.h"

#include "platform/linux/x11/X11Connection.h"

#include <xcb/xfixes.h>

#include <algorithm>

namespace quillmender {

ConversionGroup::ConversionGroup(X11Connection &connection, xcb_atom_t selection,
                                 const TransferBudget &budget)
    : QObject(&connection),
      connection_(connection),
      selection_(selection),
      budget_(budget) {
    deadline_.setSingleShot(true);
    connect(&deadline_, &QTimer::timeout, this, &ConversionGroup::settle);
    connect(&connection_, &X11Connection::eventReceived, this, &ConversionGroup::handleEvent);
    connect(&connection_, &X11Connection::lost, this, &ConversionGroup::settle);
}

ConversionGroup::~ConversionGroup() {
    for (auto &conversion : conversions_) {
        conversion->disconnect(this);
        if (!conversion->isFinished())
            SelectionConversion::abandon(std::move(conversion));
    }
}

void ConversionGroup::request(const QList<xcb_atom_t> &targets, xcb_timestamp_t time) {
    isSettled_ = false;
    for (const xcb_atom_t target : targets) {
        conversions_.push_back(
            std::make_unique<SelectionConversion>(connection_, selection_, target, time));
        connect(conversions_.back().get(), &SelectionConversion::advanced, this,
                &ConversionGroup::handleAdvance);
    }
    xcb_flush(connection_.xcb());
    deadline_.start(targets.isEmpty() ? std::chrono::milliseconds(0) : budget_.remaining());
}

void ConversionGroup::handleEvent(const xcb_generic_event_t *event) {
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

void ConversionGroup::waitForAnswers() {
    constexpr std::chrono::milliseconds afterGivingUp(200);
    const std::chrono::milliseconds remaining = budget_.remaining();
    deadline_.start(isGivenUp_ ? std::min(remaining, afterGivingUp) : remaining);
}

void ConversionGroup::handleAdvance() {
    qsizetype answers = 0;
    qsizetype received = 0;
    for (const auto &conversion : conversions_) {
        answers += conversion->isFinished() ? 1 : 0;
        received += conversion->received();
    }
    budget_.noteProgress(answers, received);
    if (std::ranges::all_of(conversions_, [](const auto &each) { return each->isFinished(); }))
        settle();
    else
        waitForAnswers();
}

void ConversionGroup::settle() {
    if (isSettled_)
        return;
    isSettled_ = true;
    deadline_.stop();
    Q_EMIT settled();
}

} // namespace quillmender
