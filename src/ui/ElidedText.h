#pragma once

#include <QFont>
#include <QStringList>

class QPainter;
class QRect;

namespace quillmender {

/// The text in one line of the width; where it is cut, the ellipsis stands at a word's end and not
/// behind a blank.
QString elided(const QString &text, const QFont &font, int width);

/// The text broken into at most that many lines of the width; what is left over ends the last one
/// in an ellipsis.
QStringList elidedLines(const QString &text, const QFont &font, int width, int maximumLines);

/// Draws one line in its own writing direction, from the left edge.
void drawLine(QPainter &painter, const QRect &area, const QString &line);

} // namespace quillmender
