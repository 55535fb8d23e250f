#include "ui/style/MenuStyle.h"

#include "ui/TextStyle.h"
#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <QStyleOptionMenuItem>

#include <algorithm>
#include <cmath>

namespace quillmender::menuStyle {

namespace {

bool hasCheckArea(const QStyleOptionMenuItem &item) {
    return item.menuHasCheckableItems || item.checkType != QStyleOptionMenuItem::NotCheckable;
}

int leadingOf(const QStyleOptionMenuItem &item) {
    return metrics::itemPadding + (hasCheckArea(item) ? grown(metrics::checkArea) : 0);
}

void drawSeparator(QPainter &painter, const QStyleOptionMenuItem &item, const Colors &colors) {
    const int y = item.rect.center().y();
    painter.fillRect(QRectF(item.rect.left() + metrics::itemPadding, y,
                            item.rect.width() - 2 * metrics::itemPadding, metrics::hairline),
                     lookOf(Part::menu, State::rest, colors).outline);
}

void drawTexts(QPainter &painter, const QStyleOptionMenuItem &item, const Look &look) {
    const QRect area = item.rect.adjusted(leadingOf(item), 0, -metrics::itemPadding, 0);
    const QString title = item.text.section(u'\t', 0, 0);
    const QString shortcut = item.text.section(u'\t', 1);
    constexpr int flags = Qt::AlignVCenter | Qt::TextSingleLine;
    painter.setFont(item.font);
    painter.setPen(look.text);
    painter.drawText(area, flags | Qt::AlignLeft | Qt::TextHideMnemonic, title);
    painter.setPen(look.secondaryText);
    painter.drawText(area, flags | Qt::AlignRight, shortcut);
}

void drawFloating(QPainter &painter, const QStyleOption &option, qreal radius, const Look &look,
                  bool blends) {
    if (!blends)
        painter.fillRect(option.rect, look.outline);
    drawing::surface(painter, option.rect, radius, look);
}

} // namespace

QSize sizeOf(const QStyleOptionMenuItem &item, const QSize &contents) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator)
        return QSize(2 * metrics::itemPadding, metrics::separatorHeight);
    const QFontMetrics font(item.font);
    const bool hasShortcuts = item.text.contains(u'\t') || item.reservedShortcutWidth > 0;
    const int text =
        std::max(contents.width(), font.horizontalAdvance(item.text.section(u'\t', 0, 0)) + 1);
    return QSize(leadingOf(item) + text + (hasShortcuts ? metrics::shortcutGap : 0) +
                     metrics::itemPadding,
                 font.height() + metrics::itemTextRoom);
}

void drawItem(QPainter &painter, const QStyleOptionMenuItem &item, const Colors &colors) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        drawSeparator(painter, item, colors);
        return;
    }
    const bool enabled = item.state & QStyle::State_Enabled;
    const bool selected = item.state & QStyle::State_Selected;
    const State state = !enabled ? State::disabled : selected ? State::hovered : State::rest;
    const Look look = lookOf(Part::menuItem, state, colors);
    // A list of choices has filled the line with the colour of a window before.
    painter.fillRect(item.rect, lookOf(Part::menu, State::rest, colors).fill);
    if (state == State::hovered)
        drawing::surface(painter, item.rect, metrics::itemRadius, look);
    drawTexts(painter, item, look);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal middle = QRectF(item.rect).center().y();
    if (item.checked)
        drawing::checkMark(painter,
                           QPointF(item.rect.left() + metrics::itemPadding + grown(5), middle),
                           look.symbol);
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        drawing::arrow(painter, QPointF(item.rect.right() - metrics::itemPadding, middle),
                       look.symbol);
}

void drawPanel(QPainter &painter, const QStyleOption &option, const Colors &colors, bool blends) {
    drawFloating(painter, option, metrics::floatingRadius, lookOf(Part::menu, State::rest, colors),
                 blends);
}

void drawToolTip(QPainter &painter, const QStyleOption &option, const Colors &colors, bool blends) {
    drawFloating(painter, option, metrics::toolTipRadius,
                 lookOf(Part::toolTip, State::rest, colors), blends);
}

QRegion maskOf(const QRect &window, qreal radius) {
    const int corner = int(std::ceil(radius));
    QRegion region = window.adjusted(0, corner, 0, -corner);
    for (int y = 0; y < corner; ++y) {
        const qreal up = radius - y - 0.5;
        const int blank = int(std::lround(radius - std::sqrt(radius * radius - up * up)));
        const QRect line(window.left() + blank, window.top() + y, window.width() - 2 * blank, 1);
        region += line;
        region += line.translated(0, window.height() - 1 - 2 * y);
    }
    return region;
}

} // namespace quillmender::menuStyle
