#include "platform/linux/x11/X11Property.h"

#include "platform/linux/x11/X11Connection.h"

#include <cstring>

namespace quillmender {

QList<quint32> X11Property::cardinals() const {
    if (format != 32)
        return {};
    QList<quint32> values(value.size() / qsizetype{sizeof(quint32)});
    if (!values.isEmpty())
        std::memcpy(values.data(), value.constData(), values.size() * sizeof(quint32));
    return values;
}

std::optional<X11Property> readProperty(const X11Connection &connection, xcb_window_t window,
                                        xcb_atom_t property, AfterReading after) {
    constexpr quint32 everything = 0x1fffffff;
    xcb_generic_error_t *error = nullptr;
    const auto reply = adoptXcb(xcb_get_property_reply(
        connection.xcb(),
        xcb_get_property(connection.xcb(), after == AfterReading::remove ? 1 : 0, window, property,
                         XCB_GET_PROPERTY_TYPE_ANY, 0, everything),
        &error));
    std::free(error);
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    return X11Property{reply->type, reply->format,
                       QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                                  xcb_get_property_value_length(reply.get()))};
}

quint32 readCardinal(const X11Connection &connection, xcb_window_t window, xcb_atom_t property) {
    const auto found = readProperty(connection, window, property);
    return found ? found->cardinals().value(0) : 0;
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

} // namespace quillmender
