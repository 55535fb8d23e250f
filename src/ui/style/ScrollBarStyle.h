#pragma once

#include "ui/style/Look.h"

#include <QStyle>

class QPainter;
class QStyleOptionSlider;

/// Narrow scroll bars without buttons, invisible while there is nothing to scroll.
namespace quillmender::scrollBarStyle {

QRect partOf(const QStyleOptionSlider &option, QStyle::SubControl part);
void draw(QPainter &painter, const QStyleOptionSlider &option, const Colors &colors);

} // namespace quillmender::scrollBarStyle
