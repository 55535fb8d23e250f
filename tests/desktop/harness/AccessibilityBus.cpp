#include "desktop/harness/AccessibilityBus.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/SessionBus.h"
#include "desktop/harness/Waiter.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QUuid>

namespace quillmender::harness {

namespace {

const QString busName = QStringLiteral("org.a11y.Bus");
const QString busPath = QStringLiteral("/org/a11y/bus");
const QString statusInterface = QStringLiteral("org.a11y.Status");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString isEnabledProperty = QStringLiteral("IsEnabled");

QDBusMessage propertyCall(const QString &method, const QVariantList &arguments) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(busName, busPath, propertiesInterface, method);
    call.setArguments(arguments);
    return call;
}

QString askForAddress(SessionBus &session) {
    session.waitForOwner(busName);
    const QDBusReply<QString> address = session.connection().call(
        QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("GetAddress")));
    if (!address.isValid())
        throw HarnessError(
            QStringLiteral("no accessibility bus: %1").arg(address.error().message()));
    return address.value();
}

} // namespace

AccessibilityBus::AccessibilityBus(SessionBus &session, bool enabled,
                                   const QProcessEnvironment &environment, const QString &logFile)
    : session_(session),
      process_({.program = QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
                .arguments = {QStringLiteral("--launch-immediately")},
                .environment = environment,
                .logFile = logFile,
                .input = {},
                .pipeOutput = false,
                .workingDirectory = {}}),
      address_(askForAddress(session)),
      connection_(QDBusConnection::connectToBus(address_, QUuid::createUuid().toString())) {
    if (!connection_.isConnected())
        throw HarnessError(QStringLiteral("no connection to the accessibility bus"));
    const QDBusReply<void> started =
        connection_.interface()->startService(QStringLiteral("org.a11y.atspi.Registry"));
    if (!started.isValid())
        throw HarnessError(
            QStringLiteral("no accessibility registry: %1").arg(started.error().message()));
    setEnabled(enabled);
}

AccessibilityBus::~AccessibilityBus() {
    QDBusConnection::disconnectFromBus(connection_.name());
}

bool AccessibilityBus::isEnabled() const {
    const QDBusReply<QVariant> reply = session_.connection().call(
        propertyCall(QStringLiteral("Get"), {statusInterface, isEnabledProperty}));
    return reply.isValid() && reply.value().toBool();
}

void AccessibilityBus::setEnabled(bool enabled) {
    session_.connection().call(
        propertyCall(QStringLiteral("Set"), {statusInterface, isEnabledProperty,
                                             QVariant::fromValue(QDBusVariant(enabled))}));
    waitUntil([&] { return isEnabled() == enabled; }, QStringLiteral("IsEnabled is changed"));
}

} // namespace quillmender::harness
