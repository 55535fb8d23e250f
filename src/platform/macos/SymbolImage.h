#pragma once

#include <QByteArray>
#include <QString>

namespace quillmender {

/// The system symbol of that name in the middle of a square of `pixelSize`, as large as fits, as
/// premultiplied 32-bit ARGB in native byte order. Empty when there is no such symbol.
QByteArray systemSymbolImage(const QString &name, int pixelSize, quint32 color);

} // namespace quillmender
