#include "platform/linux/services/DesktopInstance.h"

#include "platform/ApplicationId.h"
#include "platform/linux/services/TerminationSignals.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QLoggingCategory>

#include <optional>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.instance", QtWarningMsg)

const auto serviceName = QString::fromLatin1(applicationId);
const QString objectPath =
    QLatin1Char('/') + QString(serviceName).replace(QLatin1Char('.'), QLatin1Char('/'));
// Long enough for a copy that is busy for a moment.
constexpr int callDeadline = 5000;

/// Why the owner of the name is not a copy that has been activated; absent when it is one.
std::optional<QString> activateOwner(const QDBusConnection &bus) {
    const QDBusMessage call = QDBusMessage::createMethodCall(serviceName, objectPath, serviceName,
                                                             QStringLiteral("ActivateInstance"));
    const QDBusMessage answer = bus.call(call, QDBus::Block, callDeadline);
    if (answer.type() == QDBusMessage::ReplyMessage &&
        answer.arguments() == QVariantList{serviceName})
        return std::nullopt;
    const bool isLate = answer.type() == QDBusMessage::ErrorMessage &&
                        QDBusError(answer).type() == QDBusError::NoReply;
    return isLate ? QStringLiteral("cannot start: the program that owns the name %1 on the session "
                                   "bus does not answer")
                        .arg(serviceName)
                  : QStringLiteral("cannot start: another program owns the name %1 on the session "
                                   "bus")
                        .arg(serviceName);
}

} // namespace

InstanceClaim DesktopInstance::claim(std::function<void(const QString &action)> onAction) {
    using enum InstanceClaim::Outcome;
    onAction_ = std::move(onAction);
    onTerminationSignal([this] { perform(QString::fromLatin1(instanceAction::quit)); });
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCInfo(log) << "no session bus";
        return {};
    }
    new ApplicationAdaptor(this);
    new InstanceAdaptor(this);
    bus.registerObject(objectPath, this);
    if (bus.registerService(serviceName))
        return {};
    const auto failure = activateOwner(bus);
    if (!failure)
        return {.outcome = otherActivated};
    // The owner may have ended meanwhile.
    if (bus.registerService(serviceName))
        return {};
    return {.outcome = failed, .reason = *failure};
}

void DesktopInstance::perform(const QString &action) {
    // In a turn of its own, so that the caller on the bus has its answer before a window shows.
    QMetaObject::invokeMethod(this, [this, action] { onAction_(action); }, Qt::QueuedConnection);
}

ApplicationAdaptor::ApplicationAdaptor(DesktopInstance *instance)
    : QDBusAbstractAdaptor(instance),
      instance_(instance) {}

void ApplicationAdaptor::Activate(const QVariantMap &) {
    instance_->perform(QString::fromLatin1(instanceAction::activate));
}

void ApplicationAdaptor::Open(const QStringList &, const QVariantMap &platformData) {
    Activate(platformData);
}

void ApplicationAdaptor::ActivateAction(const QString &name, const QVariantList &,
                                        const QVariantMap &) {
    // The name that means activation here is none that the desktop knows.
    if (!name.isEmpty())
        instance_->perform(name);
}

InstanceAdaptor::InstanceAdaptor(DesktopInstance *instance)
    : QDBusAbstractAdaptor(instance),
      instance_(instance) {}

QString InstanceAdaptor::ActivateInstance() {
    instance_->perform(QString::fromLatin1(instanceAction::activate));
    return serviceName;
}

} // namespace quillmender
