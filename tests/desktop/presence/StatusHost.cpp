#include "desktop/presence/StatusHost.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QUuid>

namespace quillmender {

namespace {

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

QVariantMap readMap(const QDBusArgument &argument) {
    QVariantMap map;
    argument >> map;
    return map;
}

// One entry is (ia{sv}av): number, properties, entries below.
std::pair<MenuLine, QList<QDBusArgument>> readEntry(const QDBusArgument &argument) {
    MenuLine line;
    QList<QDBusArgument> below;
    argument.beginStructure();
    argument >> line.id;
    line.properties = readMap(argument);
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant entry;
        argument >> entry;
        below.append(qvariant_cast<QDBusArgument>(entry.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return {line, below};
}

QDBusMessage ask(const QDBusConnection &bus, const QDBusMessage &call) {
    QDBusMessage reply = bus.call(call); // NOLINT(misc-const-correctness): moved when returned
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw harness::HarnessError(call.member() + QStringLiteral(": ") + reply.errorMessage());
    return reply;
}

} // namespace

QString MenuLine::shortcut() const {
    const QVariant value = properties.value(QStringLiteral("shortcut"));
    if (!value.isValid())
        return {};
    QList<QStringList> chords;
    value.value<QDBusArgument>() >> chords;
    return chords.value(0).join(u'+');
}

StatusHost::StatusHost(const QString &busAddress)
    : watcher_(true, busAddress),
      bus_(QDBusConnection::connectToBus(busAddress, QUuid::createUuid().toString())) {}

StatusHost::~StatusHost() {
    QDBusConnection::disconnectFromBus(bus_.name());
}

QStringList StatusHost::items() const {
    QStringList present;
    for (const QString &name : watcher_.items())
        if (bus_.interface()->isServiceRegistered(name))
            present.append(name);
    return present;
}

QString StatusHost::waitForItem() const {
    harness::waitUntil([this] { return items().size() == 1; },
                       QStringLiteral("one item is registered"));
    return items().constFirst();
}

QVariant StatusHost::property(const QString &item, const QString &name) const {
    QDBusMessage call = QDBusMessage::createMethodCall(
        item, itemPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << itemInterface << name;
    return ask(bus_, call).arguments().constFirst().value<QDBusVariant>().variant();
}

QList<MenuLine> StatusHost::menu(const QString &item) const {
    const QString path = property(item, QStringLiteral("Menu")).value<QDBusObjectPath>().path();
    QDBusMessage call =
        QDBusMessage::createMethodCall(item, path, menuInterface, QStringLiteral("GetLayout"));
    call << 0 << -1 << QStringList();
    const auto root = ask(bus_, call).arguments().at(1).value<QDBusArgument>();
    QList<MenuLine> lines;
    for (const QDBusArgument &entry : readEntry(root).second)
        lines.append(readEntry(entry).first);
    return lines;
}

void StatusHost::activate(const QString &item) const {
    QDBusMessage call =
        QDBusMessage::createMethodCall(item, itemPath, itemInterface, QStringLiteral("Activate"));
    call << 0 << 0;
    ask(bus_, call);
}

void StatusHost::pick(const QString &item, int line) const {
    const QString path = property(item, QStringLiteral("Menu")).value<QDBusObjectPath>().path();
    QDBusMessage call =
        QDBusMessage::createMethodCall(item, path, menuInterface, QStringLiteral("Event"));
    call << menu(item).at(line).id << QStringLiteral("clicked")
         << QVariant::fromValue(QDBusVariant(QString())) << 0U;
    ask(bus_, call);
}

} // namespace quillmender
