#include "platform/linux/x11/X11Property.h"

#include "platform/linux/x11/X11Connection.h"

#include <cstring>

namespace quillmender::x11 {

QList<quint32> X11Property::cardinals() const {
    if (format != 32)
        return {};
    QList<quint32> values(value.size() / qsizetype{sizeof(quint32)});
    if (!values.isEmpty())
        std::memcpy(values.data(), value.constData(), values.size() * sizeof(quint32));
    return values;
}

namespace {

std::optional<X11PropertyPiece> readPiece(const X11Connection &connection, xcb_window_t window,
                                          xcb_atom_t property, bool isTaken, qsizetype offset,
                                          qsizetype most) {
    constexpr qsizetype unit = 4;
    const auto reply =
        replyTo(connection.xcb(), xcb_get_property_reply,
                xcb_get_property(connection.xcb(), isTaken ? 1 : 0, window, property,
                                 XCB_GET_PROPERTY_TYPE_ANY, static_cast<quint32>(offset / unit),
                                 static_cast<quint32>(most / unit)));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    const QByteArray bytes(static_cast<const char *>(xcb_get_property_value(reply.get())),
                           xcb_get_property_value_length(reply.get()));
    return X11PropertyPiece{{reply->type, reply->format, bytes}, qsizetype{reply->bytes_after}};
}

} // namespace

std::optional<X11Property> readProperty(const X11Connection &connection, xcb_window_t window,
                                        xcb_atom_t property, qsizetype most) {
    auto piece = readPiece(connection, window, property, false, 0, most);
    if (!piece)
        return std::nullopt;
    return std::move(piece->property);
}

std::optional<X11PropertyPiece> takePropertyPiece(const X11Connection &connection,
                                                  xcb_window_t window, xcb_atom_t property,
                                                  qsizetype offset, qsizetype most) {
    return readPiece(connection, window, property, true, offset, most);
}

std::optional<X11PropertyPiece> measureProperty(const X11Connection &connection,
                                                xcb_window_t window, xcb_atom_t property) {
    return readPiece(connection, window, property, false, 0, 0);
}

quint32 readCardinal(const X11Connection &connection, xcb_window_t window, xcb_atom_t property) {
    const auto found = readProperty(connection, window, property);
    return found ? found->cardinals().value(0) : 0;
}

CardinalQuestion::CardinalQuestion(const X11Connection &connection, xcb_window_t window,
                                   xcb_atom_t property)
    : connection_(connection),
      question_(xcb_get_property(connection.xcb(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY,
                                 0, 1)) {}

quint32 CardinalQuestion::answer() const {
    const auto reply = replyTo(connection_.xcb(), xcb_get_property_reply, question_);
    const bool isCardinal =
        reply && reply->format == 32 && xcb_get_property_value_length(reply.get()) >= 4;
    quint32 value = 0;
    if (isCardinal)
        std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof value);
    return value;
}

void writeProperty(const X11Connection &connection, xcb_window_t window, xcb_atom_t property,
                   const X11Property &contents) {
    const auto units = static_cast<quint32>(contents.value.size() / (contents.format / 8));
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, contents.type,
                        contents.format, units, contents.value.constData());
}

void writeCardinals(const X11Connection &connection, xcb_window_t window, xcb_atom_t property,
                    xcb_atom_t type, const QList<quint32> &values) {
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<quint32>(values.size()), values.constData());
}

} // namespace quillmender::x11
