#pragma once

#include "ui/style/Look.h"

#include <QStyle>

class QPainter;
class QStyleOptionComboBox;

/// Buttons that open a list of choices.
namespace quillmender::popUpStyle {

/// With room for a text of that width.
QSize sizeOf(const QStyleOptionComboBox &option, int textWidth);
QRect partOf(const QStyleOptionComboBox &option, QStyle::SubControl part);
void drawButton(QPainter &painter, const QStyleOptionComboBox &option, const Colors &colors);
void drawLabel(QPainter &painter, const QStyleOptionComboBox &option, const Colors &colors);

} // namespace quillmender::popUpStyle
