#pragma once

#include "ui/style/Look.h"

#include <QPainter>
#include <QStyleOption>

/// Strokes and shapes that several kinds of control share.
namespace quillmender::drawing {

/// The state in which the toolkit wants the control painted.
State stateOf(const QStyleOption &option);

/// The area with its edges where the device's pixels end, at any scale.
QRectF onPixels(const QPainter &painter, const QRectF &area);

/// A rounded fill with the look's outline, as large as `area`; nothing where the look has neither.
void surface(QPainter &painter, const QRectF &area, qreal radius, const Look &look);

/// The focus ring just within `area`.
void ring(QPainter &painter, const QRectF &area, qreal radius, const QColor &color);

/// A surface that wears the ring in place of its outline while it has the keyboard focus.
void focusable(QPainter &painter, const QRectF &area, qreal radius, const Look &look, bool focused);

/// Two chevrons, one up and one down.
void chevrons(QPainter &painter, const QPointF &middle, const QColor &color);

/// One chevron that points to the right.
void arrow(QPainter &painter, const QPointF &middle, const QColor &color);

void checkMark(QPainter &painter, const QPointF &middle, const QColor &color);

} // namespace quillmender::drawing
