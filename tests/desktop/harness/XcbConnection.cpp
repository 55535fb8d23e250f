#include "desktop/harness/XcbConnection.h"

#include "desktop/harness/HarnessError.h"

#include <cstring>

namespace quillmender::harness {

XcbConnection::XcbConnection(const QString &display) {
    int screenNumber = 0;
    connection_ = xcb_connect(display.toUtf8().constData(), &screenNumber);
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw HarnessError(QStringLiteral("no connection to display %1").arg(display));
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; screenNumber > 0; --screenNumber)
        xcb_screen_next(&screens);
    screen_ = screens.data;
}

XcbConnection::~XcbConnection() {
    xcb_disconnect(connection_);
}

xcb_atom_t XcbConnection::atom(const QByteArray &name) {
    if (const auto known = atoms_.constFind(name); known != atoms_.constEnd())
        return *known;
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.constData());
    const XcbPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection_, cookie, nullptr));
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    atoms_.insert(name, atom);
    return atom;
}

QByteArray XcbConnection::atomName(xcb_atom_t atom) {
    const XcbPointer<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
    if (!reply)
        return {};
    return {xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get())};
}

std::optional<QByteArray> XcbConnection::property(xcb_window_t window, const QByteArray &name) {
    const auto cookie =
        xcb_get_property(connection_, 0, window, atom(name), XCB_ATOM_ANY, 0, UINT32_MAX / 4);
    const XcbPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    return QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

std::optional<quint32> XcbConnection::cardinal(xcb_window_t window, const QByteArray &name) {
    const std::optional<QByteArray> bytes = property(window, name);
    quint32 value = 0;
    if (!bytes || bytes->size() < static_cast<qsizetype>(sizeof(value)))
        return std::nullopt;
    std::memcpy(&value, bytes->constData(), sizeof(value));
    return value;
}

xcb_window_t XcbConnection::createHiddenWindow() {
    const xcb_window_t window = xcb_generate_id(connection_);
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    return window;
}

void XcbConnection::roundTrip() {
    const XcbPointer<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

} // namespace quillmender::harness
