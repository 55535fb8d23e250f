#include "ui/style/Drawing.h"

#include "ui/TextStyle.h"
#include "ui/style/Metrics.h"

#include <algorithm>
#include <cmath>

namespace quillmender::drawing {

namespace {

constexpr qreal strokeWidth = 1.6;

/// A mark around `middle` as it is beside a text of the usual size; it grows with the text.
void stroke(QPainter &painter, const QPointF &middle, const QPolygonF &mark, const QColor &color) {
    const double scale = textScale();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, strokeWidth * scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPolygonF line;
    for (const QPointF &point : mark)
        line.append(middle + point * scale);
    painter.drawPolyline(line);
}

/// The width in whole device pixels, of which there is always one.
qreal lineWidth(const QPainter &painter, qreal width) {
    const qreal scale = std::abs(painter.deviceTransform().m11());
    constexpr qreal half = 0.5;
    return scale > 0 ? std::max(1.0, std::ceil(width * scale - half)) / scale : width;
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

QRectF onPixels(const QPainter &painter, const QRectF &area) {
    const QTransform &toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale)
        return area;
    const QRectF device = toDevice.mapRect(area);
    const QPointF corner(std::round(device.left()), std::round(device.top()));
    const QPointF opposite(std::round(device.right()), std::round(device.bottom()));
    return toDevice.inverted().mapRect(QRectF(corner, opposite));
}

void surface(QPainter &painter, const QRectF &area, qreal radius, const Look &look) {
    painter.setRenderHint(QPainter::Antialiasing);
    const bool outlined = look.outline.isValid();
    const qreal line = lineWidth(painter, metrics::hairline);
    const qreal edge = outlined ? line / 2 : 0;
    painter.setPen(outlined ? QPen(look.outline, line) : QPen(Qt::NoPen));
    painter.setBrush(look.fill.isValid() ? QBrush(look.fill) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(inset(onPixels(painter, area), edge), radius - edge, radius - edge);
}

void ring(QPainter &painter, const QRectF &area, qreal radius, const QColor &color) {
    if (!color.isValid())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal line = lineWidth(painter, metrics::ringWidth);
    painter.setPen(QPen(color, line));
    painter.setBrush(Qt::NoBrush);
    const qreal edge = line / 2;
    painter.drawRoundedRect(inset(onPixels(painter, area), edge), radius - edge, radius - edge);
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
        stroke(painter, middle, {{-3.5, 2.5 * way}, {0, 6 * way}, {3.5, 2.5 * way}}, color);
}

void arrow(QPainter &painter, const QPointF &middle, const QColor &color) {
    stroke(painter, middle, {{-1.75, -3.5}, {1.75, 0}, {-1.75, 3.5}}, color);
}

void checkMark(QPainter &painter, const QPointF &middle, const QColor &color) {
    stroke(painter, middle, {{-4, 0.5}, {-1, 3.5}, {4, -3}}, color);
}

} // namespace quillmender::drawing
