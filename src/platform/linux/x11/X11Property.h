#pragma once

#include <QByteArray>
#include <QList>
#include <xcb/xcb.h>

#include <optional>

namespace quillmender::x11 {

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

/// A part of a property that may be too large to be had at once.
struct X11PropertyPiece {
    X11Property property;
    /// Bytes behind this piece.
    qsizetype left = 0;
};

/// What a program says of itself is not longer than this.
inline constexpr qsizetype mostOfProperty = qsizetype{1024} * 1024;

/// The property of whatever type, no more than its first bytes; absent when the window or the
/// property is not there.
std::optional<X11Property> readProperty(const X11Connection &connection, xcb_window_t window,
                                        xcb_atom_t property, qsizetype most = mostOfProperty);

/// The bytes from `offset` on, a multiple of four. The property is removed with the last of them.
std::optional<X11PropertyPiece> takePropertyPiece(const X11Connection &connection,
                                                  xcb_window_t window, xcb_atom_t property,
                                                  qsizetype offset, qsizetype most);

/// Only its type, format and size, the size as `left`.
std::optional<X11PropertyPiece> measureProperty(const X11Connection &connection,
                                                xcb_window_t window, xcb_atom_t property);

/// The first 32-bit unit, 0 when there is none.
quint32 readCardinal(const X11Connection &connection, xcb_window_t window, xcb_atom_t property);

/// The same question, sent with others before the answers are waited for.
class CardinalQuestion {
  public:
    CardinalQuestion(const X11Connection &connection, xcb_window_t window, xcb_atom_t property);

    /// To be called once.
    quint32 answer() const;

  private:
    const X11Connection &connection_;
    xcb_get_property_cookie_t question_;
};

void writeProperty(const X11Connection &connection, xcb_window_t window, xcb_atom_t property,
                   const X11Property &contents);

void writeCardinals(const X11Connection &connection, xcb_window_t window, xcb_atom_t property,
                    xcb_atom_t type, const QList<quint32> &values);

} // namespace quillmender::x11
