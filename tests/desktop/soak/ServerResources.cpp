#include "desktop/soak/ServerResources.h"

#include <xcb/res.h>

#include <cstdlib>
#include <memory>

namespace quillmender {

namespace {

template <typename Reply> std::unique_ptr<Reply, decltype(&std::free)> adopt(Reply *reply) {
    return {reply, &std::free};
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

} // namespace

qint64 serverResources(qint64 processId, const QString &display) {
    const auto xcb = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>(
        xcb_connect(display.toLatin1().constData(), nullptr), &xcb_disconnect);
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

} // namespace quillmender
