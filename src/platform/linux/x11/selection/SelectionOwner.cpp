#include "platform/linux/x11/selection/SelectionOwner.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/selection/IncrSender.h"
#include "platform/linux/x11/selection/SelectionText.h"
#include "platform/linux/x11/windows/WindowOwnership.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <cstring>

namespace quillmender::x11 {

SelectionOwner::SelectionOwner(X11Connection &connection, xcb_atom_t selection,
                               SelectionReach reach)
    : connection_(connection),
      selection_(selection),
      reach_(reach) {
    connect(&connection_, &X11Connection::eventReceived, this, &SelectionOwner::handleEvent);
}

bool SelectionOwner::own(SelectionContents contents, xcb_window_t reader) {
    ownedSince_ = connection_.serverTime();
    reader_ = reader;
    contents_ = std::move(contents);
    xcb_set_selection_owner(connection_.xcb(), connection_.window(), selection_, ownedSince_);
    isOwner_ = true;
    isOwner_ = isStillOwner();
    if (!isOwner_) {
        qCWarning(x11Log, "the server gave a selection to another client");
        contents_.clear();
    }
    return isOwner_;
}

void SelectionOwner::exchange(SelectionContents contents) {
    if (isOwner_)
        contents_ = std::move(contents);
}

bool SelectionOwner::isStillOwner() const {
    if (!isOwner_)
        return false;
    const auto reply = replyTo(connection_.xcb(), xcb_get_selection_owner_reply,
                               xcb_get_selection_owner(connection_.xcb(), selection_));
    return reply && reply->owner == connection_.window();
}

xcb_timestamp_t SelectionOwner::release() {
    const xcb_timestamp_t time = connection_.serverTime();
    xcb_set_selection_owner(connection_.xcb(), XCB_WINDOW_NONE, selection_, time);
    xcb_flush(connection_.xcb());
    isOwner_ = false;
    contents_.clear();
    return time;
}

void SelectionOwner::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_SELECTION_REQUEST)
        handleRequest(eventCast<xcb_selection_request_event_t>(event));
    else if (eventType(event) == XCB_SELECTION_CLEAR)
        handleClear(eventCast<xcb_selection_clear_event_t>(event));
}

void SelectionOwner::handleClear(const xcb_selection_clear_event_t &clear) {
    // One that was on its way while the selection was taken back speaks of the former ownership.
    const bool isLate = static_cast<qint32>(clear.time - ownedSince_) < 0;
    if (clear.selection != selection_ || clear.owner != connection_.window() || isLate)
        return;
    isOwner_ = false;
    contents_.clear();
}

void SelectionOwner::handleRequest(const xcb_selection_request_event_t &request) {
    if (request.selection != selection_ || request.owner != connection_.window())
        return;
    Q_EMIT asked();
    // Clients from before the ICCCM leave the choice of the property to the owner.
    const xcb_atom_t property =
        request.property != XCB_ATOM_NONE ? request.property : request.target;
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    const bool isMultiple = request.target == connection_.atom("MULTIPLE");
    hasHandedData_ = false;
    askedAt_ = std::chrono::steady_clock::now();
    handedBytes_ = 0;
    isForOnlooker_ = isOnlooker(request.requestor);
    const bool isAnswered = isOwner_ && !isRefused(request.requestor) &&
                            (isMultiple ? request.property != XCB_ATOM_NONE &&
                                              answerMultiple(request.requestor, property)
                                        : answer(request.requestor, request.target, property));
    notify.property = isAnswered ? property : xcb_atom_t{XCB_ATOM_NONE};
    // The wire wants 32 bytes of every event.
    alignas(xcb_selection_notify_event_t) std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &notify, sizeof notify);
    xcb_send_event(connection_.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes.data());
    xcb_flush(connection_.xcb());
    if (hasHandedData_)
        Q_EMIT served(request.requestor, askedAt_);
}

bool SelectionOwner::isRefused(xcb_window_t requestor) const {
    return refused_ != XCB_WINDOW_NONE && isSameApplication(connection_, requestor, refused_);
}

bool SelectionOwner::isOnlooker(xcb_window_t requestor) const {
    return reader_ != XCB_WINDOW_NONE && !isActingFor(connection_, requestor, reader_);
}

bool SelectionOwner::isShown(xcb_atom_t target) {
    return !isForOnlooker_ || target == connection_.atom(clipboardManagerMark);
}

// A compositor lists the text of its own clients under the names of X11, too, of which clients of
// the server have others besides.
bool SelectionOwner::isCompositorsName(xcb_atom_t target) {
    const auto offers = [this](const char *name) {
        return std::ranges::find(contents_, connection_.atom(name), &SelectionTarget::target) !=
               contents_.end();
    };
    if (reach_ == SelectionReach::server || offers("TEXT") || offers("COMPOUND_TEXT"))
        return false;
    if (target == connection_.atom("UTF8_STRING"))
        return offers("text/plain;charset=utf-8");
    return target == XCB_ATOM_STRING && offers("text/plain");
}

bool SelectionOwner::answer(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
    if (target == connection_.atom("TARGETS")) {
        answerTargets(requestor, property);
        return true;
    }
    if (target == connection_.atom("TIMESTAMP")) {
        writeCardinals(connection_, requestor, property, XCB_ATOM_INTEGER, {ownedSince_});
        return true;
    }
    const auto found = std::ranges::find(contents_, target, &SelectionTarget::target);
    if (found == contents_.end() || !isShown(target))
        return false;
    return hand(requestor, property, found->property);
}

bool SelectionOwner::answerMultiple(xcb_window_t requestor, xcb_atom_t property) {
    const auto asked = readProperty(connection_, requestor, property);
    if (!asked || asked->format != 32)
        return false;
    QList<quint32> pairs = asked->cardinals();
    QSet<quint32> seen;
    for (qsizetype i = 0; i + 1 < pairs.size(); i += 2) {
        // All is written before anything is taken away: each target once.
        const bool isPossible = pairs[i + 1] != XCB_ATOM_NONE && !seen.contains(pairs[i]) &&
                                pairs[i] != connection_.atom("MULTIPLE");
        seen.insert(pairs[i]);
        if (!isPossible || !answer(requestor, pairs[i], pairs[i + 1]))
            pairs[i + 1] = XCB_ATOM_NONE;
    }
    writeCardinals(connection_, requestor, property, connection_.atom("ATOM_PAIR"), pairs);
    return true;
}

void SelectionOwner::answerTargets(xcb_window_t requestor, xcb_atom_t property) {
    QList<quint32> targets;
    if (reach_ == SelectionReach::server)
        targets = {connection_.atom("TARGETS"), connection_.atom("TIMESTAMP"),
                   connection_.atom("MULTIPLE")};
    for (const SelectionTarget &each : contents_) {
        if (isShown(each.target) && !isCompositorsName(each.target))
            targets.append(each.target);
    }
    writeCardinals(connection_, requestor, property, XCB_ATOM_ATOM, targets);
}

bool SelectionOwner::hand(xcb_window_t requestor, xcb_atom_t property,
                          const X11Property &contents) {
    handedBytes_ += contents.value.size();
    if (handedBytes_ > connection_.maximumDataBytes())
        return handIncrementally(requestor, property, contents);
    writeProperty(connection_, requestor, property, contents);
    hasHandedData_ = true;
    return true;
}

bool SelectionOwner::handIncrementally(xcb_window_t requestor, xcb_atom_t property,
                                       const X11Property &contents) {
    constexpr qsizetype mostTransfers = 256;
    const std::pair key(requestor, property);
    // Who asks again has no use for the rest of the first answer.
    delete transfers_.take(key);
    if (transfers_.size() >= mostTransfers) {
        qCWarning(x11Log, "too many transfers are under way for window 0x%x", requestor);
        return false;
    }
    auto *const sender = new IncrSender(connection_, requestor, property, contents);
    sender->setParent(this);
    transfers_.insert(key, sender);
    connect(sender, &IncrSender::finished, this,
            [this, sender, key, requestor, askedAt = askedAt_](bool isComplete) {
                transfers_.remove(key);
                sender->deleteLater();
                if (isComplete)
                    Q_EMIT served(requestor, askedAt);
            });
    return true;
}

} // namespace quillmender::x11
