#include "desktop/x11/ScriptedOwner.h"

#include <QTimer>

#include <algorithm>
#include <array>
#include <cstring>

namespace quillmender::x11 {

ScriptedOwner::ScriptedOwner(const QByteArray &display, const char *selection)
    : connection_(X11Connection::open(display)),
      selection_(connection_->atom(selection)) {
    connect(connection_.get(), &X11Connection::eventReceived, this, &ScriptedOwner::handleEvent);
    own();
}

void ScriptedOwner::own() {
    xcb_set_selection_owner(connection_->xcb(), connection_->window(), selection_,
                            connection_->serverTime());
    connection_->serverTime();
}

void ScriptedOwner::die() {
    // It may be one of its own events that kills it.
    connection_->disconnect(this);
    // What it has said so far arrives; closing with unread events would discard it.
    connection_->serverTime();
    QTimer::singleShot(0, [dead = connection_.release()] { delete dead; });
}

void ScriptedOwner::offer(const char *target, const X11Property &property) {
    offerSpecially(target, [this, property](const auto &request) { answer(request, property); });
}

void ScriptedOwner::offerIncrementally(const char *target, const X11Property &property,
                                       qsizetype chunk) {
    offerSpecially(target, [this, property, chunk](const auto &request) {
        beginIncremental(request, property, chunk);
    });
}

void ScriptedOwner::offerSpecially(
    const char *target, std::function<void(const xcb_selection_request_event_t &)> action) {
    order_.append(atom(target));
    actions_[atom(target)] = std::move(action);
}

void ScriptedOwner::answer(const xcb_selection_request_event_t &request,
                           const X11Property &property) {
    writeProperty(*connection_, request.requestor, request.property, property);
    notify(request, request.property);
}

void ScriptedOwner::notify(const xcb_selection_request_event_t &request, xcb_atom_t property) {
    xcb_selection_notify_event_t event{};
    event.response_type = XCB_SELECTION_NOTIFY;
    event.time = request.time;
    event.requestor = request.requestor;
    event.selection = request.selection;
    event.target = request.target;
    event.property = property;
    std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &event, sizeof event);
    xcb_send_event(connection_->xcb(), 0, request.requestor, 0, bytes.data());
    xcb_flush(connection_->xcb());
}

void ScriptedOwner::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_SELECTION_REQUEST) {
        handleRequest(eventCast<xcb_selection_request_event_t>(event));
    } else if (eventType(event) == XCB_PROPERTY_NOTIFY) {
        const auto &change = eventCast<xcb_property_notify_event_t>(event);
        if (change.state == XCB_PROPERTY_DELETE)
            continueIncremental(change.window, change.atom);
    }
}

void ScriptedOwner::handleRequest(const xcb_selection_request_event_t &request) {
    ++requests;
    if (isSilent)
        return;
    if (request.target == atom("TARGETS")) {
        X11Property targets{XCB_ATOM_ATOM, 32, {}};
        targets.value = QByteArray(reinterpret_cast<const char *>(order_.constData()),
                                   order_.size() * qsizetype{sizeof(xcb_atom_t)});
        answer(request, targetsAnswer.value_or(targets));
        return;
    }
    const auto action = actions_.find(request.target);
    if (action == actions_.end())
        notify(request, XCB_ATOM_NONE);
    else
        action->second(request);
}

void ScriptedOwner::beginIncremental(const xcb_selection_request_event_t &request,
                                     const X11Property &property, qsizetype chunk) {
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_->xcb(), request.requestor, XCB_CW_EVENT_MASK, &events);
    transfers_[{request.requestor, request.property}] = {property, chunk};
    const QList<quint32> size{static_cast<quint32>(property.value.size())};
    writeCardinals(*connection_, request.requestor, request.property, atom("INCR"), size);
    notify(request, request.property);
}

void ScriptedOwner::continueIncremental(xcb_window_t requestor, xcb_atom_t property) {
    const auto found = transfers_.find({requestor, property});
    if (found == transfers_.end())
        return;
    Incremental &transfer = found->second;
    const QByteArray part = transfer.property.value.mid(transfer.sent, transfer.chunk);
    writeProperty(*connection_, requestor, property,
                  {transfer.property.type, transfer.property.format, part});
    xcb_flush(connection_->xcb());
    transfer.sent += part.size();
    if (part.isEmpty())
        transfers_.erase(found);
}

} // namespace quillmender::x11
