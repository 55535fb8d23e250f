#include "platform/linux/portal/PortalRequest.h"

#include "platform/linux/portal/PortalNames.h"
#include "platform/linux/portal/PortalToken.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace quillmender::portal {

namespace {

const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
constexpr int replyMilliseconds = 10000; // it may have to be started first

PortalAnswer::Outcome outcomeOf(quint32 code) {
    switch (code) {
    case 0:
        return PortalAnswer::Outcome::granted;
    case 1:
        return PortalAnswer::Outcome::cancelled;
    default:
        return PortalAnswer::Outcome::failed;
    }
}

QString reasonOf(PortalAnswer::Outcome outcome) {
    switch (outcome) {
    case PortalAnswer::Outcome::granted:
        return {};
    case PortalAnswer::Outcome::cancelled:
        return QStringLiteral("the user has not agreed");
    case PortalAnswer::Outcome::failed:
    case PortalAnswer::Outcome::unanswered:
        break;
    }
    return QStringLiteral("the portal has refused");
}

} // namespace

// Responses are sent to who has asked alone, and are told apart by their path here: the bus would
// take its time to let one through that is asked for when the path is known.
PortalRequest::PortalRequest(QDBusConnection bus)
    : bus_(std::move(bus)),
      token_(newToken()),
      path_(handlePath(QStringLiteral("request"), bus_, token_)) {
    bus_.connect(service, {}, requestInterface, QStringLiteral("Response"), this,
                 SLOT(handleResponse(QDBusMessage)));
}

PortalRequest::~PortalRequest() {
    if (isSent_ && !isOver_)
        close();
}

void PortalRequest::close() const {
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path_, requestInterface, QStringLiteral("Close"));
    message.setAutoStartService(false);
    bus_.send(message);
}

void PortalRequest::send(const QDBusMessage &call) {
    isSent_ = true;
    auto *watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, replyMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &PortalRequest::handleReply);
}

void PortalRequest::handleReply(QDBusPendingCallWatcher *watcher) {
    watcher->deleteLater();
    const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
    if (isOver_)
        return;
    if (reply.isError()) {
        fail(reply.error().message());
        return;
    }
    // Portals before version 0.9 choose the path themselves.
    path_ = reply.value().path();
    if (others_.contains(path_))
        accept(others_.take(path_));
}

void PortalRequest::handleResponse(const QDBusMessage &response) {
    if (response.path() == path_)
        accept(response);
    else
        others_.insert(response.path(), response);
}

void PortalRequest::accept(const QDBusMessage &response) {
    if (response.signature() != QStringLiteral("ua{sv}")) {
        fail(QStringLiteral("the portal answers nonsense"));
        return;
    }
    const QVariantList arguments = response.arguments();
    const PortalAnswer::Outcome outcome = outcomeOf(arguments[0].toUInt());
    finish({outcome, qdbus_cast<QVariantMap>(arguments[1]), reasonOf(outcome)});
}

void PortalRequest::fail(const QString &reason) {
    finish({PortalAnswer::Outcome::failed, {}, reason});
}

void PortalRequest::giveUp(const QString &reason) {
    if (!isOver_)
        close();
    finish({PortalAnswer::Outcome::unanswered, {}, reason});
}

void PortalRequest::finish(PortalAnswer answer) {
    if (std::exchange(isOver_, true))
        return;
    answer_ = std::move(answer);
    Q_EMIT over();
}

} // namespace quillmender::portal
