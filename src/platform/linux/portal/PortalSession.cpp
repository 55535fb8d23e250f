#include "platform/linux/portal/PortalSession.h"

#include "platform/linux/portal/PortalNames.h"
#include "platform/linux/portal/PortalToken.h"

#include <QDBusMessage>

#include <utility>

namespace quillmender::portal {

namespace {

const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
constexpr int farewellMilliseconds = 250;

QDBusMessage closeOf(const QString &path) {
    QDBusMessage close =
        QDBusMessage::createMethodCall(service, path, sessionInterface, QStringLiteral("Close"));
    close.setAutoStartService(false);
    return close;
}

} // namespace

PortalSession::PortalSession(QDBusConnection bus)
    : bus_(std::move(bus)),
      token_(newToken()),
      path_(handlePath(QStringLiteral("session"), bus_, token_)) {
    listen();
}

PortalSession::~PortalSession() {
    if (!isClosed_)
        bus_.send(closeOf(path_));
}

void PortalSession::listen() {
    bus_.connect(service, path_, sessionInterface, QStringLiteral("Closed"), this,
                 SLOT(handleClosed()));
}

void PortalSession::setPath(const QString &path) {
    if (path == path_ || !path.startsWith(desktopPath + QStringLiteral("/session/")))
        return;
    path_ = path;
    listen();
}

void PortalSession::closeNow() {
    if (!std::exchange(isClosed_, true))
        bus_.call(closeOf(path_), QDBus::Block, farewellMilliseconds);
}

void PortalSession::handleClosed() {
    isClosed_ = true;
    Q_EMIT closed();
}

} // namespace quillmender::portal
