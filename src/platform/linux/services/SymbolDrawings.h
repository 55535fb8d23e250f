#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace quillmender {

/// Our own drawing of the named symbol, `pixelSize` squared. Null when there is no such symbol.
QImage drawSymbol(const QString &name, int pixelSize, const QColor &color);

/// The same for a symbol of straight lines at a size of few pixels: every line has that width and
/// lies on whole pixels, so that none is a blur.
QImage drawSharpSymbol(const QString &name, int pixelSize, int lineWidth, const QColor &color);

/// The names that drawSymbol() knows.
QStringList symbolNames();

} // namespace quillmender
