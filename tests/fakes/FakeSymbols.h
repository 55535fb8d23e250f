#pragma once

#include "platform/Symbols.h"

#include <QStringList>

namespace quillmender::fakes {

/// A square of the wanted colour for each symbol, where symbols are drawn at all.
class FakeSymbols : public Symbols {
  public:
    QImage image(const QString &name, int pixelSize, const QColor &color) override {
        if (!drawsSymbols)
            return {};
        asked.append(QStringLiteral("%1 %2").arg(name).arg(pixelSize));
        QImage square(pixelSize, pixelSize, QImage::Format_ARGB32_Premultiplied);
        square.fill(Qt::transparent);
        for (int y = 0; y < pixelSize; ++y)
            for (int x = bearing; x < pixelSize; ++x)
                square.setPixelColor(x, y, color);
        return square;
    }

    bool drawsSymbols = false;
    int bearing = 0;   ///< blank columns at the left
    QStringList asked; ///< each as its name and size
};

} // namespace quillmender::fakes
