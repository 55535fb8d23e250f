#include "desktop/sessions/StatusMenuReader.h"

#include "desktop/harness/Waiter.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QVariantMap>

#include <algorithm>

namespace quillmender {

namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");
const auto menuInterface = QStringLiteral("com.canonical.dbusmenu");

StatusMenuReader::Entry entryOf(const QDBusArgument &node) {
    StatusMenuReader::Entry entry;
    QVariantMap properties;
    node.beginStructure();
    node >> entry.id >> properties;
    node.endStructure();
    entry.title = properties.value(QStringLiteral("label")).toString().remove(u'_');
    entry.isVisible = properties.value(QStringLiteral("visible"), true).toBool();
    return entry;
}

} // namespace

StatusMenuReader::StatusMenuReader(const QDBusConnection &bus) : bus_(bus) {
    bus_.registerObject(watcherPath, this,
                        QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                            QDBusConnection::ExportAllProperties);
    bus_.registerService(watcherName);
}

StatusMenuReader::~StatusMenuReader() {
    bus_.unregisterService(watcherName);
    bus_.unregisterObject(watcherPath);
}

// The program may be waiting for this status area meanwhile, so its loop goes on.
QDBusMessage StatusMenuReader::ask(const QDBusMessage &question) const {
    const QDBusPendingCallWatcher call(bus_.asyncCall(question));
    harness::waitUntil([&] { return call.isFinished(); },
                       QStringLiteral("the status item answers"));
    return call.reply();
}

QString StatusMenuReader::menuPath() const {
    QDBusMessage question = QDBusMessage::createMethodCall(
        item_, QStringLiteral("/StatusNotifierItem"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << QStringLiteral("org.kde.StatusNotifierItem") << QStringLiteral("Menu");
    const QDBusMessage answer = ask(question);
    const QVariant value = answer.arguments().value(0).value<QDBusVariant>().variant();
    return value.value<QDBusObjectPath>().path();
}

QList<StatusMenuReader::Entry> StatusMenuReader::entries() const {
    if (item_.isEmpty())
        return {};
    QDBusMessage question = QDBusMessage::createMethodCall(item_, menuPath(), menuInterface,
                                                           QStringLiteral("GetLayout"));
    question << 0 << -1 << QStringList();
    const QDBusMessage answer = ask(question);
    if (answer.arguments().size() < 2)
        return {};
    const auto root = answer.arguments().at(1).value<QDBusArgument>();
    QList<Entry> found;
    int id = 0;
    QVariantMap properties;
    root.beginStructure();
    root >> id >> properties;
    root.beginArray();
    while (!root.atEnd()) {
        QDBusVariant child;
        root >> child;
        found.append(entryOf(child.variant().value<QDBusArgument>()));
    }
    root.endArray();
    root.endStructure();
    return found;
}

QStringList StatusMenuReader::visibleTitles() const {
    QStringList titles;
    for (const Entry &entry : entries())
        if (entry.isVisible)
            titles.append(entry.title);
    return titles;
}

void StatusMenuReader::choose(const QString &title) const {
    const QList<Entry> all = entries();
    const auto found = std::ranges::find(all, title, &Entry::title);
    if (found == all.end())
        return;
    QDBusMessage event =
        QDBusMessage::createMethodCall(item_, menuPath(), menuInterface, QStringLiteral("Event"));
    event << found->id << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(QString()))
          << 0U;
    ask(event);
}

} // namespace quillmender
