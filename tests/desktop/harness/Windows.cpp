#include "desktop/harness/Windows.h"

#include "desktop/harness/Waiter.h"
#include "desktop/harness/XcbConnection.h"

#include <cstring>

namespace quillmender::harness {

QList<xcb_window_t> Windows::all() const {
    const QByteArray bytes =
        connection_.property(connection_.root(), "_NET_CLIENT_LIST").value_or(QByteArray());
    QList<xcb_window_t> windows(bytes.size() / static_cast<qsizetype>(sizeof(xcb_window_t)));
    if (!windows.isEmpty())
        std::memcpy(windows.data(), bytes.constData(), windows.size() * sizeof(xcb_window_t));
    return windows;
}

QList<xcb_window_t> Windows::viewable() const {
    const auto cookie = xcb_query_tree(connection_.get(), connection_.root());
    const XcbPointer<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(connection_.get(), cookie, nullptr));
    QList<xcb_window_t> shown;
    if (!reply)
        return shown;
    const xcb_window_t *const children = xcb_query_tree_children(reply.get());
    for (int i = 0; i < xcb_query_tree_children_length(reply.get()); ++i) {
        if (isViewable(children[i]))
            shown.append(children[i]);
    }
    return shown;
}

xcb_window_t Windows::active() const {
    return connection_.cardinal(connection_.root(), "_NET_ACTIVE_WINDOW").value_or(0);
}

QString Windows::title(xcb_window_t window) const {
    const auto name = connection_.property(window, "_NET_WM_NAME");
    return QString::fromUtf8(name ? *name : connection_.property(window, "WM_NAME").value_or(""));
}

qint64 Windows::processId(xcb_window_t window) const {
    return connection_.cardinal(window, "_NET_WM_PID").value_or(0);
}

bool Windows::isViewable(xcb_window_t window) const {
    const auto cookie = xcb_get_window_attributes(connection_.get(), window);
    const XcbPointer<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(connection_.get(), cookie, nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

QRect Windows::geometry(xcb_window_t window) const {
    xcb_connection_t *connection = connection_.get();
    const auto sizeCookie = xcb_get_geometry(connection, window);
    const auto placeCookie =
        xcb_translate_coordinates(connection, window, connection_.root(), 0, 0);
    const XcbPointer<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, sizeCookie, nullptr));
    const XcbPointer<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
    if (!size || !place)
        return {};
    return {place->dst_x, place->dst_y, size->width, size->height};
}

xcb_window_t Windows::ofProcess(qint64 wanted) const {
    xcb_window_t found = 0;
    for (const xcb_window_t window : all()) {
        if (processId(window) == wanted && isViewable(window))
            found = window;
    }
    return found;
}

xcb_window_t Windows::openedBy(qint64 processId, const QList<xcb_window_t> & /*before*/) const {
    return ofProcess(processId);
}

xcb_window_t Windows::titled(const QString &wanted) const {
    xcb_window_t found = 0;
    for (const xcb_window_t window : all()) {
        if (title(window) == wanted && isViewable(window))
            found = window;
    }
    return found;
}

void Windows::activate(xcb_window_t window) {
    constexpr quint32 sourceIsPager = 2;
    sendToRoot(window, "_NET_ACTIVE_WINDOW", sourceIsPager);
    waitUntil([&] { return active() == window; },
              QStringLiteral("window %1 is active").arg(window));
}

void Windows::move(xcb_window_t window, QPoint position) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = connection_.atom("_NET_MOVERESIZE_WINDOW");
    constexpr quint32 positionIsOfTheWindowItself = XCB_GRAVITY_STATIC;
    constexpr quint32 onlyXAndY = 3 << 8;
    constexpr quint32 sourceIsPager = 2 << 12;
    event.data.data32[0] = positionIsOfTheWindowItself | onlyXAndY | sourceIsPager;
    event.data.data32[1] = static_cast<quint32>(position.x());
    event.data.data32[2] = static_cast<quint32>(position.y());
    sendToRoot(event);
    waitUntil([&] { return geometry(window).topLeft() == position; },
              QStringLiteral("window %1 is moved").arg(window));
}

void Windows::close(xcb_window_t window) {
    sendToRoot(window, "_NET_CLOSE_WINDOW", 0);
}

void Windows::sendToRoot(xcb_window_t window, const char *type, quint32 first) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = connection_.atom(type);
    // _NET_CLOSE_WINDOW has its source second, _NET_ACTIVE_WINDOW first.
    event.data.data32[0] = first;
    event.data.data32[1] = first == 0 ? 2 : 0;
    sendToRoot(event);
}

void Windows::sendToRoot(const xcb_client_message_event_t &event) {
    xcb_send_event(connection_.get(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    connection_.roundTrip();
}

} // namespace quillmender::harness
