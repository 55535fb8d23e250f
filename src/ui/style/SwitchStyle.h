#pragma once

#include "ui/style/Look.h"

#include <QRect>
#include <QSize>

class QPainter;
class QStyleOptionButton;

/// A text with a switch at its end.
namespace quillmender::switchStyle {

QSize sizeOf(const QStyleOptionButton &option);
QRect trackOf(const QStyleOptionButton &option);
QRect textAreaOf(const QStyleOptionButton &option);
void draw(QPainter &painter, const QStyleOptionButton &option, const Colors &colors);

} // namespace quillmender::switchStyle
