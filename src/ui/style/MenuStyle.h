#pragma once

#include "ui/style/Look.h"

#include <QRegion>

class QPainter;
class QStyleOption;
class QStyleOptionMenuItem;

/// What floats above the windows: menus, the lists of pop-up buttons, tool tips.
namespace quillmender::menuStyle {

/// `contents` as the menu measured it; a list of choices leaves it empty.
QSize sizeOf(const QStyleOptionMenuItem &item, const QSize &contents);
void drawItem(QPainter &painter, const QStyleOptionMenuItem &item, const Colors &colors);
void drawPanel(QPainter &painter, const QStyleOption &option, const Colors &colors);
void drawToolTip(QPainter &painter, const QStyleOption &option, const Colors &colors);

/// The pixels that a rounded window touches.
QRegion maskOf(const QRect &window, qreal radius);

} // namespace quillmender::menuStyle
