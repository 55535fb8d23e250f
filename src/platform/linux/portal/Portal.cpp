#include "platform/linux/portal/Portal.h"

#include "platform/ApplicationId.h"
#include "platform/Clock.h"
#include "platform/SignalWait.h"
#include "platform/linux/portal/PortalNames.h"
#include "platform/linux/portal/PortalRequest.h"

#include <QCoroDBusPendingCall>
#include <QDBusVariant>
#include <QPointer>

namespace quillmender::portal {

namespace {

const QString prefix = QStringLiteral("org.freedesktop.portal.");
constexpr int startMilliseconds = 10000; // it may have to be started first

PortalAnswer failed(const QString &reason) {
    return {PortalAnswer::Outcome::failed, {}, reason};
}

} // namespace

QDBusConnection Portal::ownConnection() {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                         QStringLiteral("quillmender-portal"));
}

Portal::Portal(QDBusConnection bus)
    : bus_(std::move(bus)),
      watcher_(service, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        setIntroduction(Introduction::none);
        Q_EMIT gone();
    });
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &Portal::came);
}

QDBusMessage Portal::call(const QString &interface, const QString &method,
                          const QVariantList &arguments) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, desktopPath, prefix + interface, method);
    message.setArguments(arguments);
    return message;
}

void Portal::setIntroduction(Introduction introduction) {
    introduction_ = introduction;
    Q_EMIT introductionChanged();
}

QCoro::Task<bool> Portal::introduceOurselves() {
    const QPointer self(this);
    while (introduction_ == Introduction::underWay) {
        try {
            co_await SignalWait(this, &Portal::introductionChanged);
        } catch (const CancellationError &) {
            co_return false;
        }
    }
    if (introduction_ == Introduction::made)
        co_return true;
    setIntroduction(Introduction::underWay);
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, desktopPath, QStringLiteral("org.freedesktop.host.portal.Registry"),
        QStringLiteral("Register"));
    message.setArguments({QLatin1String(applicationId), QVariantMap()});
    QDBusPendingCall pending = bus_.asyncCall(message, startMilliseconds);
    const QDBusMessage reply = co_await pending;
    if (!self)
        co_return false;
    // Older portals have no such thing and find out by themselves. Who has not answered may do so
    // later, and is asked again.
    const bool isAnswered = reply.type() == QDBusMessage::ReplyMessage ||
                            (pending.error().type() != QDBusError::NoReply &&
                             pending.error().type() != QDBusError::ServiceUnknown);
    if (introduction_ == Introduction::underWay)
        setIntroduction(isAnswered ? Introduction::made : Introduction::none);
    co_return isAnswered;
}

QCoro::Task<quint32> Portal::version(QString interface) {
    const QPointer self(this);
    const bool isIntroduced = co_await introduceOurselves();
    if (!self || !isIntroduced)
        co_return quint32{0};
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, desktopPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    message.setArguments({prefix + interface, QStringLiteral("version")});
    QDBusPendingCall pending = bus_.asyncCall(message, static_cast<int>(usualLimit.count()));
    const QDBusMessage reply = co_await pending;
    if (reply.signature() != QStringLiteral("v"))
        co_return quint32{0};
    co_return reply.arguments().constFirst().value<QDBusVariant>().variant().toUInt();
}

QCoro::Task<PortalAnswer> Portal::ask(PortalQuestion question, std::chrono::milliseconds limit) {
    const QPointer self(this);
    const bool isIntroduced = co_await introduceOurselves();
    if (!self)
        co_return failed(QStringLiteral("the program ends"));
    if (!isIntroduced)
        co_return failed(QStringLiteral("the portal does not answer"));
    PortalRequest request(bus_);
    connect(this, &Portal::gone, &request,
            [&request] { request.fail(QStringLiteral("the portal has ended")); });
    question.options.insert(QStringLiteral("handle_token"), request.token());
    question.arguments.append(question.options);
    request.send(call(question.interface, question.method, question.arguments));
    if (!request.isOver())
        co_await SignalWait(&request, &PortalRequest::over, limit);
    request.giveUp(QStringLiteral("the portal does not answer"));
    co_return PortalAnswer(request.answer());
}

} // namespace quillmender::portal
