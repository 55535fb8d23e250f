#include "platform/linux/x11/windows/X11Tray.h"

#include "platform/linux/x11/Xcb.h"

#include <QGuiApplication>
#include <xcb/xcb.h>

#include <string_view>

namespace quillmender::x11 {

namespace {

xcb_connection_t *toolkitConnection() {
    auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t internAtom(xcb_connection_t *connection, std::string_view name) {
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<quint16>(name.size()), name.data());
    const auto reply = replyTo(connection, xcb_intern_atom_reply, cookie);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

// Asking the toolkit would make it remember for good that there is no status area yet.
bool X11Tray::isThere() {
    xcb_connection_t *const connection = toolkitConnection();
    if (!connection)
        return false;
    const xcb_atom_t tray = internAtom(connection, "_NET_SYSTEM_TRAY_S0");
    const auto owner = replyTo(connection, xcb_get_selection_owner_reply,
                               xcb_get_selection_owner(connection, tray));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

void X11Tray::onAnnouncement(std::function<void()> listener) {
    listener_ = std::move(listener);
    if (!listener_ || managerAtom_ != XCB_ATOM_NONE)
        return;
    xcb_connection_t *const connection = toolkitConnection();
    if (!connection)
        return;
    managerAtom_ = internAtom(connection, "MANAGER");
    QCoreApplication::instance()->installNativeEventFilter(this);
}

// A tray announces itself with this message to the root window, whose messages the toolkit receives
// for that reason.
bool X11Tray::nativeEventFilter(const QByteArray &, void *message, qintptr *) {
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
        return false;
    if (eventCast<xcb_client_message_event_t>(event).type == managerAtom_ && listener_)
        listener_();
    return false;
}

} // namespace quillmender::x11
