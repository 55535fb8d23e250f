#include "ui/style/Drawing.h"

#include "ui/style/Metrics.h"

namespace quillmender::drawing {

namespace {

constexpr qreal strokeWidth = 1.6;

void stroke(QPainter &painter, const QPolygonF &line, const QColor &color) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
}

QRectF inset(const QRectF &area, qreal by) {
    return area.adjusted(by, by, -by, -by);
}

} // namespace

State stateOf(const QStyleOption &option) {
    if (!(option.state & QStyle::State_Enabled))
        return State::disabled;
    if (option.state & QStyle::State_Sunken)
        return State::pressed;
    return option.state & QStyle::State_MouseOver ? State::hovered : State::rest;
}

void surface(QPainter &painter, const QRectF &area, qreal radius, const Look &look) {
    painter.setRenderHint(QPainter::Antialiasing);
    const bool outlined = look.outline.isValid();
    const qreal edge = outlined ? metrics::hairline / 2 : 0;
    painter.setPen(outlined ? QPen(look.outline, metrics::hairline) : QPen(Qt::NoPen));
    painter.setBrush(look.fill.isValid() ? QBrush(look.fill) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(inset(area, edge), radius - edge, radius - edge);
}

void ring(QPainter &painter, const QRectF &area, qreal radius, const QColor &color) {
    if (!color.isValid())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, metrics::ringWidth));
    painter.setBrush(Qt::NoBrush);
    const qreal edge = metrics::ringWidth / 2;
    painter.drawRoundedRect(inset(area, edge), radius - edge, radius - edge);
}

void focusable(QPainter &painter, const QRectF &area, qreal radius, const Look &look,
               bool focused) {
    surface(painter, area, radius, look);
    if (!focused)
        return;
    const qreal by = look.ringPlace == RingPlace::inside ? metrics::prominentRingInset : 0;
    ring(painter, inset(area, by), radius - by, look.ring);
}

void chevrons(QPainter &painter, const QPointF &middle, const QColor &color) {
    for (const qreal way : {-1.0, 1.0})
        stroke(painter,
               {middle + QPointF(-3.5, 2.5 * way), middle + QPointF(0, 6 * way),
                middle + QPointF(3.5, 2.5 * way)},
               color);
}

void arrow(QPainter &painter, const QPointF &middle, const QColor &color) {
    stroke(painter,
           {middle + QPointF(-1.75, -3.5), middle + QPointF(1.75, 0), middle + QPointF(-1.75, 3.5)},
           color);
}

void checkMark(QPainter &painter, const QPointF &middle, const QColor &color) {
    stroke(painter, {middle + QPointF(-4, 0.5), middle + QPointF(-1, 3.5), middle + QPointF(4, -3)},
           color);
}

} // namespace quillmender::drawing
