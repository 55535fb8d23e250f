#include "platform/linux/services/Badge.h"

#include "platform/Appearance.h"
#include "platform/linux/services/SymbolDrawings.h"

#include <QPainter>
#include <QPixmap>

namespace quillmender {

// A status area does not tell its background: a tile of our own is seen on any.
QIcon badge(const QString &symbol) {
    QIcon icon;
    for (const int size : {16, 18, 20, 22, 24, 28, 32, 48, 64}) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgb(houseAccent));
        painter.drawRoundedRect(image.rect(), size * 0.24, size * 0.24);
        const int spacing = qRound(size * 0.18);
        const int glyph = 4 * spacing;
        painter.drawImage((size - glyph) / 2, (size - glyph) / 2,
                          drawSharpSymbol(symbol, glyph, (spacing + 1) / 2, Qt::white));
        painter.end();
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace quillmender
