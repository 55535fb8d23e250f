#include "platform/linux/x11/selection/ClipboardChanges.h"

#include "platform/linux/x11/X11Connection.h"

#include <xcb/xfixes.h>

namespace quillmender::x11 {

ClipboardChanges::ClipboardChanges(X11Connection &connection)
    : connection_(connection),
      clipboard_(connection.atom("CLIPBOARD")) {
    connect(&connection_, &X11Connection::eventReceived, this, &ClipboardChanges::handleEvent);
    xcb_xfixes_select_selection_input(connection_.xcb(), connection_.window(), clipboard_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

void ClipboardChanges::countRelease(xcb_timestamp_t time) {
    releasedAt_ = time;
    countOwn();
}

bool ClipboardChanges::isAnyUncounted() {
    // After a round trip every change that the server knows of is at hand.
    connection_.serverTime();
    return connection_.isPending([this](const auto *event) { return isForeign(event); });
}

void ClipboardChanges::handleEvent(const xcb_generic_event_t *event) {
    if (!isForeign(event))
        return;
    ++count_;
    Q_EMIT foreignOwner(eventCast<xcb_xfixes_selection_notify_event_t>(event).owner);
}

bool ClipboardChanges::isForeign(const xcb_generic_event_t *event) const {
    if (eventType(event) != connection_.fixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY)
        return false;
    const auto &change = eventCast<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection != clipboard_ || change.window != connection_.window())
        return false;
    // Our own changes were counted when they were made.
    const bool isOurs = change.owner == connection_.window() ||
                        (change.owner == XCB_WINDOW_NONE && releasedAt_ != XCB_CURRENT_TIME &&
                         change.selection_timestamp == releasedAt_);
    return !isOurs;
}

} // namespace quillmender::x11
