#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace quillmender {

/// The symbol that stands for the program.
inline constexpr QLatin1String programSymbol("text.quote");

/// Small pictures by the names of the system's symbols.
class Symbols {
  public:
    Symbols() = default;
    Symbols(const Symbols &) = delete;
    Symbols &operator=(const Symbols &) = delete;
    virtual ~Symbols() = default;

    /// The symbol in that colour on a transparent square of `pixelSize`, as premultiplied 32-bit
    /// ARGB. Null when there is no such symbol.
    virtual QImage image(const QString &name, int pixelSize, const QColor &color) = 0;
};

} // namespace quillmender
