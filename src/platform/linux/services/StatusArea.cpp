#include "platform/linux/services/StatusArea.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace quillmender {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
constexpr int deadlineMilliseconds = 5000;

} // namespace

StatusArea::StatusArea(QDBusConnection bus, WindowSystemTray *tray)
    : bus_(std::move(bus)),
      watcher_(watcherName, bus_, QDBusServiceWatcher::WatchForRegistration),
      tray_(tray) {}

StatusArea::~StatusArea() {
    if (tray_)
        tray_->onAnnouncement({});
}

void StatusArea::watch() {
    if (tray_)
        tray_->onAnnouncement([this] { askForHost(); });
    if (!bus_.isConnected()) {
        lookForTray();
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
            lookForTray();
    });
}

void StatusArea::lookForTray() {
    if (tray_ && tray_->isThere())
        Q_EMIT appeared();
}

} // namespace quillmender
