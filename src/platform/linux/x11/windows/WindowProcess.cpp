#include "platform/linux/x11/windows/WindowProcess.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"

#include <QSysInfo>

namespace quillmender::x11 {

namespace {

xcb_res_query_client_ids_cookie_t ask(const X11Connection &connection, xcb_window_t window) {
    const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return xcb_res_query_client_ids(connection.xcb(), 1, &spec);
}

qint64 answerTo(const X11Connection &connection, xcb_res_query_client_ids_cookie_t question) {
    const auto reply = replyTo(connection.xcb(), xcb_res_query_client_ids_reply, question);
    if (!reply)
        return 0;
    auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; ids.rem > 0; xcb_res_client_id_value_next(&ids)) {
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(ids.data) > 0)
            return *xcb_res_client_id_value_value(ids.data);
    }
    return 0;
}

QByteArray withoutDomain(const QByteArray &machine) {
    return machine.split('.').constFirst().toLower();
}

bool isOfThisMachine(const X11Connection &connection, xcb_window_t window) {
    const auto machine = readProperty(connection, window, XCB_ATOM_WM_CLIENT_MACHINE);
    return !machine ||
           withoutDomain(machine->value) == withoutDomain(QSysInfo::machineHostName().toLatin1());
}

} // namespace

qint64 processOfClient(const X11Connection &connection, xcb_window_t window) {
    return connection.hasResource() ? answerTo(connection, ask(connection, window)) : 0;
}

qint64 processOfWindow(X11Connection &connection, xcb_window_t window) {
    return ProcessQuestion(connection, window).answer();
}

ProcessQuestion::ProcessQuestion(X11Connection &connection, xcb_window_t window)
    : connection_(connection),
      window_(window) {
    if (connection_.hasResource())
        question_ = ask(connection_, window_);
}

qint64 ProcessQuestion::answer() const {
    const qint64 known = connection_.hasResource() ? answerTo(connection_, question_) : 0;
    if (known != 0)
        return known;
    const qint64 said = readCardinal(connection_, window_, connection_.atom("_NET_WM_PID"));
    return said != 0 && isOfThisMachine(connection_, window_) ? said : 0;
}

} // namespace quillmender::x11
