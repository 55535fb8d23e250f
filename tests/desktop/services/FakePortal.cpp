#include "FakePortal.h"

#include "support/LeaveBus.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QUuid>

namespace quillmender {

struct AccentChannels {
    double red = 0;
    double green = 0;
    double blue = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const AccentChannels &channels) {
    argument.beginStructure();
    argument << channels.red << channels.green << channels.blue;
    argument.endStructure();
    return argument;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the signature that the bus library wants
const QDBusArgument &operator>>(const QDBusArgument &argument, AccentChannels &channels) {
    argument.beginStructure();
    argument >> channels.red >> channels.green >> channels.blue;
    argument.endStructure();
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

namespace {
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString group = QStringLiteral("org.freedesktop.appearance");
} // namespace

FakePortal::FakePortal(const QVariantMap &appearance, const QString &busAddress)
    : connectionName_(QUuid::createUuid().toString()),
      appearance_(appearance) {
    qDBusRegisterMetaType<SettingGroups>();
    QDBusConnection bus =
        busAddress.isEmpty()
            ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_)
            : QDBusConnection::connectToBus(busAddress, connectionName_);
    bus.registerObject(portalPath, this,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    bus.registerService(service);
}

FakePortal::~FakePortal() {
    test::leaveBus(this, portalPath, QDBusConnection(connectionName_));
}

QVariant FakePortal::accent(double red, double green, double blue) {
    qDBusRegisterMetaType<AccentChannels>();
    return QVariant::fromValue(AccentChannels{red, green, blue});
}

void FakePortal::change(const QString &key, const QVariant &value) {
    appearance_.insert(key, value);
    Q_EMIT SettingChanged(group, key, QDBusVariant(value));
}

SettingGroups FakePortal::ReadAll(const QStringList &groups) {
    return groups.contains(group) ? SettingGroups{{group, appearance_}} : SettingGroups();
}

} // namespace quillmender

Q_DECLARE_METATYPE(quillmender::AccentChannels)
