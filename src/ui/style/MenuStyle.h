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
/// Where windows do not blend with what is beneath them, nothing of the panel may be seen through.
void drawPanel(QPainter &painter, const QStyleOption &option, const Colors &colors, bool blends);
void drawToolTip(QPainter &painter, const QStyleOption &option, const Colors &colors, bool blends);

/// The pixels most of which belong to a rounded window.
QRegion maskOf(const QRect &window, qreal radius);

} // namespace quillmender::menuStyle
