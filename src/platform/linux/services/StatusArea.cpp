#include "platform/linux/services/StatusArea.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace quillmender {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
constexpr int deadlineMilliseconds = 5000;

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};

xcb_connection_t *toolkitConnection() {
    auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t internAtom(xcb_connection_t *connection, std::string_view name) {
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<quint16>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

// Asking the toolkit would make it remember for good that there is no watcher yet.
bool hasTrayOfTheXServer() {
    xcb_connection_t *const connection = toolkitConnection();
    if (!connection)
        return false;
    const xcb_atom_t tray = internAtom(connection, "_NET_SYSTEM_TRAY_S0");
    const std::unique_ptr<xcb_get_selection_owner_reply_t, FreeReply> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, tray),
                                      nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace

StatusArea::StatusArea(QDBusConnection bus)
    : bus_(std::move(bus)),
      watcher_(watcherName, bus_, QDBusServiceWatcher::WatchForRegistration) {}

StatusArea::~StatusArea() {
    if (managerAtom_ != XCB_ATOM_NONE)
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

void StatusArea::watch() {
    if (xcb_connection_t *const connection = toolkitConnection()) {
        managerAtom_ = internAtom(connection, "MANAGER");
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    if (!bus_.isConnected()) {
        lookForOlderTray();
        return;
    }
    // The toolkit decides once, when the first icon is made, whether there is a host.
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &StatusArea::askForHost);
    bus_.connect(watcherName, watcherPath, watcherName,
                 QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(askForHost()));
    askForHost();
}

void StatusArea::askForHost() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    call << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto *pending = new QDBusPendingCallWatcher(bus_.asyncCall(call, deadlineMilliseconds), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *pending;
        if (!reply.isError() && reply.value().variant().toBool())
            Q_EMIT appeared();
        else
            lookForOlderTray();
    });
}

void StatusArea::lookForOlderTray() {
    if (hasTrayOfTheXServer())
        Q_EMIT appeared();
}

// A tray of the X server announces itself with this message to the root window, whose messages the
// toolkit receives for that reason.
bool StatusArea::nativeEventFilter(const QByteArray &, void *message, qintptr *) {
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
        return false;
    const auto *announcement = static_cast<const xcb_client_message_event_t *>(message);
    if (announcement->type == managerAtom_)
        askForHost();
    return false;
}

} // namespace quillmender
