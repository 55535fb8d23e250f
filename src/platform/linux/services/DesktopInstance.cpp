#include "platform/linux/services/DesktopInstance.h"

#include "platform/linux/services/TerminationSignals.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QLoggingCategory>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.instance", QtWarningMsg)

const auto serviceName = QStringLiteral("com.quillmender.Quillmender");
const auto objectPath = QStringLiteral("/com/quillmender/Quillmender");
const auto interfaceName = QStringLiteral("org.freedesktop.Application");
constexpr int callDeadline = 2000;

} // namespace

bool DesktopInstance::claim(std::function<void(const QString &action)> onAction) {
    onAction_ = std::move(onAction);
    onTerminationSignal([this] { perform(QString::fromLatin1(instanceAction::quit)); });
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCInfo(log) << "no session bus";
        return true;
    }
    new ApplicationAdaptor(this);
    bus.registerObject(objectPath, this);
    if (bus.registerService(serviceName))
        return true;

    bus.unregisterObject(objectPath);
    QDBusMessage call = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName,
                                                       QStringLiteral("Activate"));
    call << QVariantMap();
    bus.call(call, QDBus::Block, callDeadline);
    return false;
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
    instance_->perform(name);
}

} // namespace quillmender
