#include "platform/linux/atspi/AtspiBus.h"

#include "platform/linux/atspi/BusProbe.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QTimer>

#include <algorithm>

namespace quillmender::atspi {

namespace {

constexpr int connectDeadlineMs = 200;

const QString busService = QStringLiteral("org.a11y.Bus");
const QString busPath = QStringLiteral("/org/a11y/bus");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString statusInterface = QStringLiteral("org.a11y.Status");

int timeLeft(QDeadlineTimer deadline) {
    return int(std::clamp<qint64>(deadline.remainingTime(), 1, 250));
}

QDBusMessage ask(const QDBusConnection &connection, const QDBusMessage &message,
                 QDeadlineTimer deadline) {
    return connection.call(message, QDBus::Block, timeLeft(deadline));
}

} // namespace

AtspiBus::AtspiBus(const QDBusConnection &session) : session_(session), connection_(QString()) {
    registerAtspiTypes();
    auto *watcher = new QDBusServiceWatcher(busService, session_,
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &AtspiBus::connectAgain);
    QTimer::singleShot(0, this, &AtspiBus::connectAgain);
}

AtspiBus::~AtspiBus() {
    dropConnection();
}

void AtspiBus::connectAgain() {
    if (!connection_.isConnected())
        connectToBus(QDeadlineTimer(connectDeadlineMs));
}

void AtspiBus::dropConnection() {
    if (name_.isEmpty())
        return;
    connection_ = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name_);
    name_.clear();
}

QString AtspiBus::busAddress(QDeadlineTimer deadline) const {
    QString given = qEnvironmentVariable("AT_SPI_BUS_ADDRESS");
    if (!given.isEmpty())
        return given;
    const QDBusMessage question = QDBusMessage::createMethodCall(busService, busPath, busService,
                                                                 QStringLiteral("GetAddress"));
    const QDBusMessage reply = ask(session_, question, deadline);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return {};
    return reply.arguments().value(0).toString();
}

bool AtspiBus::connectToBus(QDeadlineTimer deadline) {
    dropConnection();
    const QString address = busAddress(deadline);
    if (address.isEmpty() || !busAuthenticates(address, deadline))
        return false;
    static int serial = 0;
    name_ = QStringLiteral("quillmender-accessibility-%1").arg(++serial);
    connection_ = QDBusConnection::connectToBus(address, name_);
    if (!connection_.isConnected()) {
        dropConnection();
        return false;
    }
    Q_EMIT connected();
    return true;
}

void AtspiBus::askIfEnabled(QDeadlineTimer deadline) {
    QDBusMessage question =
        QDBusMessage::createMethodCall(busService, busPath, properties, QStringLiteral("Get"));
    question << statusInterface << QStringLiteral("IsEnabled");
    // Two buses: both think at the same time.
    asked_.emplace(deadline, session_.asyncCall(question, timeLeft(deadline)), std::nullopt);
    if (!connection_.isConnected())
        return;
    const QDBusMessage greeting = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    asked_->isAlive = connection_.asyncCall(greeting, timeLeft(deadline));
}

bool AtspiBus::isEnabledAndAnswers(QDeadlineTimer deadline) {
    if (!asked_ || asked_->deadline.hasExpired())
        askIfEnabled(deadline);
    Questions asked = std::move(*asked_);
    asked_.reset();
    bool isAlive = false;
    if (asked.isAlive) {
        asked.isAlive->waitForFinished();
        isAlive = !asked.isAlive->isError();
    } else {
        // A new connection has just had its greeting answered.
        isAlive = connection_.isConnected() || connectToBus(deadline);
    }
    asked.isEnabled.waitForFinished();
    // The arguments of an error are its text, and a text counts as true.
    return isAlive && !asked.isEnabled.isError() &&
           firstValue(asked.isEnabled.reply().arguments()).toBool();
}

void AtspiBus::enable(QDeadlineTimer deadline) {
    // What was asked before it knows nothing of it.
    asked_.reset();
    QDBusMessage order =
        QDBusMessage::createMethodCall(busService, busPath, properties, QStringLiteral("Set"));
    order << statusInterface << QStringLiteral("IsEnabled")
          << QVariant::fromValue(QDBusVariant(true));
    ask(session_, order, deadline);
}

PendingCall AtspiBus::call(const CallBudgetRef &budget, const ObjectRef &object,
                           const char *interface, const char *member, const QVariantList &arguments,
                           std::chrono::milliseconds allowance) {
    const int timeout = int(budget->nextCall(allowance).count());
    if (timeout == 0 || budget->isSilent(object.service) || !connection_.isConnected()) {
        const QDBusError error(QDBusError::Disconnected, QStringLiteral("not asked"));
        return PendingCall(QDBusPendingCall::fromError(error), budget, object.service);
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        object.service, object.path, QLatin1String(interface), QLatin1String(member));
    message.setArguments(arguments);
    message.setAutoStartService(object.service == QLatin1String(protocol::registry));
    return PendingCall(connection_.asyncCall(message, timeout), budget, object.service);
}

PendingCall AtspiBus::property(const CallBudgetRef &budget, const ObjectRef &object,
                               const char *interface, const char *name) {
    return call(budget, object, "org.freedesktop.DBus.Properties", "Get",
                {QString::fromLatin1(interface), QString::fromLatin1(name)});
}

void AtspiBus::post(const ObjectRef &object, const char *interface, const char *member,
                    const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        object.service, object.path, QLatin1String(interface), QLatin1String(member));
    message.setArguments(arguments);
    message.setAutoStartService(object.service == QLatin1String(protocol::registry));
    connection_.send(message);
}

} // namespace quillmender::atspi
