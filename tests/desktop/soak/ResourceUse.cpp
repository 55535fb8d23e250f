#include "desktop/soak/ResourceUse.h"

#include "desktop/harness/Desktop.h"

#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <xcb/res.h>

#include <cstdlib>
#include <memory>

namespace quillmender {

namespace {

using harness::Desktop;

template <typename Reply> std::unique_ptr<Reply, decltype(&std::free)> adopt(Reply *reply) {
    return {reply, &std::free};
}

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

qint64 processOfClient(xcb_connection_t *xcb, quint32 resource) {
    const xcb_res_client_id_spec_t spec{resource, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = adopt(
        xcb_res_query_client_ids_reply(xcb, xcb_res_query_client_ids(xcb, 1, &spec), nullptr));
    if (!reply)
        return 0;
    auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; ids.rem > 0; xcb_res_client_id_value_next(&ids)) {
        if (xcb_res_client_id_value_value_length(ids.data) > 0)
            return *xcb_res_client_id_value_value(ids.data);
    }
    return 0;
}

qint64 resourcesOfClient(xcb_connection_t *xcb, quint32 resource) {
    const auto reply = adopt(xcb_res_query_client_resources_reply(
        xcb, xcb_res_query_client_resources(xcb, resource), nullptr));
    qint64 sum = 0;
    if (reply) {
        const xcb_res_type_t *types = xcb_res_query_client_resources_types(reply.get());
        for (quint32 i = 0; i < reply->num_types; ++i)
            sum += types[i].count;
    }
    return sum;
}

qint64 serverResources(qint64 processId, Desktop &desktop) {
    const auto xcb = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>(
        xcb_connect(desktop.display().toLatin1().constData(), nullptr), &xcb_disconnect);
    const auto clients =
        adopt(xcb_res_query_clients_reply(xcb.get(), xcb_res_query_clients(xcb.get()), nullptr));
    if (!clients)
        return 0;
    const xcb_res_client_t *const list = xcb_res_query_clients_clients(clients.get());
    qint64 sum = 0;
    for (quint32 i = 0; i < clients->num_clients; ++i) {
        if (processOfClient(xcb.get(), list[i].resource_base) == processId)
            sum += resourcesOfClient(xcb.get(), list[i].resource_base);
    }
    return sum;
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

ResourceUse ResourceUse::ofProcess(qint64 processId, Desktop &desktop) {
    ResourceUse use;
    use.memoryKiB = proportionalMemory(processId);
    use.descriptors = entries(processId, "fd");
    use.threads = entries(processId, "task");
    use.serverResources = quillmender::serverResources(processId, desktop);
    use.matchRules = quillmender::matchRules(processId, desktop.sessionBus().connection());
    return use;
}

std::ostream &operator<<(std::ostream &stream, const ResourceUse &use) {
    stream << use.memoryKiB << " KiB, " << use.descriptors << " descriptors, " << use.threads
           << " threads, " << use.serverResources << " X resources, ";
    if (use.matchRules)
        return stream << *use.matchRules << " match rules";
    return stream << "match rules unknown";
}

} // namespace quillmender
