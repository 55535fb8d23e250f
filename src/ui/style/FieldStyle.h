#pragma once

#include "ui/style/Look.h"

class QPainter;
class QStyleOption;

/// Frames of what text is typed into.
namespace quillmender::fieldStyle {

int heightOf(const QStyleOption &option);
void drawField(QPainter &painter, const QStyleOption &option, const Colors &colors);
void drawEditor(QPainter &painter, const QStyleOption &option, const Colors &colors);

} // namespace quillmender::fieldStyle
