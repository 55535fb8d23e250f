#include "desktop/soak/ResourceUse.h"

#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>

namespace quillmender {

namespace {

qint64 entries(qint64 processId, const char *folder) {
    return QDir(QStringLiteral("/proc/%1/%2").arg(processId).arg(QLatin1String(folder)))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

qint64 proportionalMemory(qint64 processId) {
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(processId));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("Pss:"))
            return line.mid(4).simplified().split(' ').first().toLongLong();
    }
    return 0;
}

/// Of every connection of the process to this bus.
std::optional<qint64> matchRules(qint64 processId, const QDBusConnection &bus) {
    const QDBusReply<QStringList> names = bus.interface()->registeredServiceNames();
    QDBusInterface statistics(QStringLiteral("org.freedesktop.DBus"),
                              QStringLiteral("/org/freedesktop/DBus"),
                              QStringLiteral("org.freedesktop.DBus.Debug.Stats"), bus);
    qint64 sum = 0;
    for (const QString &name : names.value()) {
        if (!name.startsWith(u':') || bus.interface()->servicePid(name).value() != processId)
            continue;
        const QDBusReply<QVariantMap> reply =
            statistics.call(QStringLiteral("GetConnectionStats"), name);
        if (!reply.isValid())
            return std::nullopt;
        sum += reply.value().value(QStringLiteral("MatchRules")).toLongLong();
    }
    return sum;
}

} // namespace

ResourceUse ResourceUse::ofProcess(qint64 processId, const QDBusConnection &sessionBus) {
    ResourceUse use;
    use.memoryKiB = proportionalMemory(processId);
    use.descriptors = entries(processId, "fd");
    use.threads = entries(processId, "task");
    use.matchRules = quillmender::matchRules(processId, sessionBus);
    return use;
}

std::ostream &operator<<(std::ostream &stream, const ResourceUse &use) {
    stream << use.memoryKiB << " KiB, " << use.descriptors << " descriptors, " << use.threads
           << " threads, ";
    if (use.matchRules)
        return stream << *use.matchRules << " match rules";
    return stream << "match rules unknown";
}

} // namespace quillmender
