#pragma once

#include <QByteArray>
#include <QList>
#include <xcb/xcb.h>

#include <optional>

namespace quillmender {

class X11Connection;

/// A window property as it lies on the server: 16- and 32-bit units are in native byte order.
struct X11Property {
    xcb_atom_t type = XCB_ATOM_NONE;
    quint8 format = 8;
    QByteArray value;

    friend bool operator==(const X11Property &, const X11Property &) = default;

    /// The 32-bit units; empty when the format is another one.
    QList<quint32> cardinals() const;
};

enum class AfterReading { keep, remove };

/// The whole property of whatever type, absent when the window or the property is not there.
std::optional<X11Property> readProperty(const X11Connection &connection, xcb_window_t window,
                                        xcb_atom_t property,
                                        AfterReading after = AfterReading::keep);

/// The first 32-bit unit, 0 when there is none.
quint32 readCardinal(const X11Connection &connection, xcb_window_t window, xcb_atom_t property);

void writeProperty(const X11Connection &connection, xcb_window_t window, xcb_atom_t property,
                   const X11Property &contents);

void writeCardinals(const X11Connection &connection, xcb_window_t window, xcb_atom_t property,
                    xcb_atom_t type, const QList<quint32> &values);

} // namespace quillmender
