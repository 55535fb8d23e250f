#pragma once

#include <QByteArray>
#include <QList>
#include <xcb/xproto.h>

namespace quillmender::harness {

/// The bytes of one target of an X selection, with the property type and format that carry them. On
/// Wayland the type is the target, and the format is 8.
struct ClipboardRepresentation {
    QByteArray target;
    QByteArray type;
    int format = 8;
    QByteArray bytes;

    friend bool operator==(const ClipboardRepresentation &,
                           const ClipboardRepresentation &) = default;
};

/// Everything that the owner of a clipboard hands over. Two of them are equal when every target
/// has the same bytes, type and format, in the same order; who owns them is not compared.
struct ClipboardContents {
    xcb_window_t owner = XCB_WINDOW_NONE;
    /// As TARGETS lists them.
    QList<QByteArray> targets;
    /// The targets that carry data, without the protocol's own (TARGETS, TIMESTAMP, MULTIPLE, ...).
    QList<ClipboardRepresentation> representations;

    /// The bytes of a target; empty when it is missing.
    QByteArray bytes(const QByteArray &target) const;

    friend bool operator==(const ClipboardContents &a, const ClipboardContents &b) {
        return a.representations == b.representations;
    }
};

} // namespace quillmender::harness
