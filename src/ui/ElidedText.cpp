#include "ui/ElidedText.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

namespace quillmender {

QString elided(const QString &text, const QFont &font, int width) {
    constexpr QChar ellipsis(0x2026);
    QString line = QFontMetrics(font).elidedText(text, Qt::ElideRight, width);
    if (line == text || !line.endsWith(ellipsis))
        return line;
    line.chop(1);
    while (!line.isEmpty() && line.back().isSpace())
        line.chop(1);
    return line + ellipsis;
}

QStringList elidedLines(const QString &text, const QFont &font, int width, int maximumLines) {
    if (text.isEmpty())
        return {};
    QStringList lines;
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(qMax(width, 1));
        if (lines.size() + 1 == maximumLines) {
            lines.append(elided(text.mid(line.textStart()), font, width));
            break;
        }
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

void drawLine(QPainter &painter, const QRect &area, const QString &line) {
    // The direction of the text decides on which side its ellipsis stands.
    painter.setLayoutDirection(line.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    constexpr auto place = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter;
    painter.drawText(area, int(place) | int(Qt::TextSingleLine), line);
}

} // namespace quillmender
