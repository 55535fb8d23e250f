#include "platform/linux/services/SymbolDrawings.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <cmath>

namespace quillmender {

namespace {

// Every drawing lives on a grid of 24 by 24 and is stroked with round ends.
constexpr qreal grid = 24;
constexpr qreal strokeWidth = 1.75;

struct Drawing {
    QPainterPath strokes;
    QPainterPath fills;
};

void line(QPainterPath &path, QPointF from, QPointF to) {
    path.moveTo(from);
    path.lineTo(to);
}

void dot(QPainterPath &path, QPointF centre, qreal radius) {
    path.addEllipse(centre, radius, radius);
}

// A speech bubble whose tail hangs from the bottom edge between the two given places.
QPainterPath bubble(const QRectF &body, qreal radius, qreal tailFrom, qreal tailTo, QPointF tip) {
    QPainterPath outline;
    outline.moveTo(body.left() + radius, body.top());
    outline.lineTo(body.right() - radius, body.top());
    outline.quadTo(body.topRight(), QPointF(body.right(), body.top() + radius));
    outline.lineTo(body.right(), body.bottom() - radius);
    outline.quadTo(body.bottomRight(), QPointF(body.right() - radius, body.bottom()));
    outline.lineTo(tailTo, body.bottom());
    outline.lineTo(tip);
    outline.lineTo(tailFrom, body.bottom());
    outline.lineTo(body.left() + radius, body.bottom());
    outline.quadTo(body.bottomLeft(), QPointF(body.left(), body.bottom() - radius));
    outline.lineTo(body.left(), body.top() + radius);
    outline.quadTo(body.topLeft(), QPointF(body.left() + radius, body.top()));
    outline.closeSubpath();
    return outline;
}

Drawing quotedText() {
    Drawing drawing;
    line(drawing.strokes, {4, 4.5}, {4, 19.5});
    line(drawing.strokes, {9, 6}, {20.5, 6});
    line(drawing.strokes, {9, 12}, {20.5, 12});
    line(drawing.strokes, {9, 18}, {16, 18});
    return drawing;
}

Drawing letters() {
    Drawing drawing;
    drawing.strokes.moveTo(1.9, 19);
    drawing.strokes.lineTo(6.7, 4.75);
    drawing.strokes.lineTo(11.5, 19);
    line(drawing.strokes, {3.7, 14}, {9.7, 14});
    // The stem is where the bowl ends: side by side they would clot in a small picture.
    drawing.strokes.addEllipse(QPointF(18.3, 15.4), 3.6, 3.6);
    line(drawing.strokes, {21.9, 11.8}, {21.9, 19});
    return drawing;
}

Drawing narrowingLines() {
    Drawing drawing;
    line(drawing.strokes, {3, 6.5}, {21, 6.5});
    line(drawing.strokes, {6.5, 12}, {17.5, 12});
    line(drawing.strokes, {10, 17.5}, {14, 17.5});
    return drawing;
}

Drawing conversation() {
    Drawing drawing;
    // The left bubble is cut off where the right one begins.
    drawing.strokes.moveTo(7.5, 13.5);
    drawing.strokes.lineTo(4.75, 16.2);
    drawing.strokes.lineTo(4.75, 13.3);
    drawing.strokes.quadTo(2.25, 13.1, 2.25, 10.5);
    drawing.strokes.lineTo(2.25, 6);
    drawing.strokes.quadTo(2.25, 3, 5.25, 3);
    drawing.strokes.lineTo(11.5, 3);
    drawing.strokes.quadTo(14.5, 3, 14.5, 5.6);
    drawing.strokes.addPath(
        bubble(QRectF(10, 8.25, 11.75, 10.25), 3, 16.5, 19.5, QPointF(19.4, 21.5)));
    line(drawing.strokes, {15.9, 10.9}, {15.9, 13.4});
    dot(drawing.fills, {15.9, 15.9}, 1.1);
    return drawing;
}

Drawing globe() {
    Drawing drawing;
    drawing.strokes.addEllipse(QPointF(12, 12), 9, 9);
    drawing.strokes.addEllipse(QPointF(12, 12), 4, 9);
    line(drawing.strokes, {3, 12}, {21, 12});
    return drawing;
}

Drawing checkedBubble() {
    Drawing drawing;
    drawing.strokes = bubble(QRectF(3, 3.5, 18, 13.5), 4, 7, 11.5, QPointF(7, 21));
    drawing.strokes.moveTo(8.25, 10.25);
    drawing.strokes.lineTo(11, 13);
    drawing.strokes.lineTo(15.75, 7.75);
    return drawing;
}

Drawing stackWithSparkle() {
    Drawing drawing;
    line(drawing.strokes, {8, 3}, {16, 3});
    line(drawing.strokes, {5.5, 6.25}, {18.5, 6.25});
    drawing.strokes.addRoundedRect(QRectF(3, 9.5, 18, 11.5), 3, 3);
    const QPointF centre(12, 15.25);
    drawing.fills.moveTo(centre + QPointF(0, -3.9));
    drawing.fills.quadTo(centre + QPointF(0.6, -0.6), centre + QPointF(3.9, 0));
    drawing.fills.quadTo(centre + QPointF(0.6, 0.6), centre + QPointF(0, 3.9));
    drawing.fills.quadTo(centre + QPointF(-0.6, 0.6), centre + QPointF(-3.9, 0));
    drawing.fills.quadTo(centre + QPointF(-0.6, -0.6), centre + QPointF(0, -3.9));
    return drawing;
}

using Maker = Drawing (*)();

const QHash<QString, Maker> &makers() {
    static const QHash<QString, Maker> known = {
        {QStringLiteral("text.quote"), quotedText},
        {QStringLiteral("textformat.alt"), letters},
        {QStringLiteral("line.3.horizontal.decrease"), narrowingLines},
        {QStringLiteral("bubble.left.and.exclamationmark.bubble.right"), conversation},
        {QStringLiteral("globe"), globe},
        {QStringLiteral("checkmark.bubble"), checkedBubble},
        {QStringLiteral("sparkles.rectangle.stack"), stackWithSparkle},
    };
    return known;
}

Drawing scaled(const Drawing &drawing, int pixelSize) {
    const QTransform transform = QTransform::fromScale(pixelSize / grid, pixelSize / grid);
    return {transform.map(drawing.strokes), transform.map(drawing.fills)};
}

QImage paint(const Drawing &drawing, int pixelSize, qreal lineWidth, const QColor &color) {
    QImage image(pixelSize, pixelSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(drawing.strokes,
                       QPen(color, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(drawing.fills, color);
    return image;
}

} // namespace

QImage drawSymbol(const QString &name, int pixelSize, const QColor &color) {
    const Maker make = makers().value(name);
    if (!make || pixelSize <= 0)
        return {};
    return paint(scaled(make(), pixelSize), pixelSize, strokeWidth * pixelSize / grid, color);
}

QImage drawSharpSymbol(const QString &name, int pixelSize, int lineWidth, const QColor &color) {
    const Maker make = makers().value(name);
    if (!make || pixelSize <= 0)
        return {};
    Drawing drawing = scaled(make(), pixelSize);
    // The middle of a line of odd width is the middle of a pixel.
    const qreal middle = lineWidth % 2 == 0 ? 0 : 0.5;
    for (int at = 0; at < drawing.strokes.elementCount(); ++at) {
        const QPointF point = drawing.strokes.elementAt(at);
        drawing.strokes.setElementPositionAt(at, std::round(point.x() - middle) + middle,
                                             std::round(point.y() - middle) + middle);
    }
    return paint(drawing, pixelSize, lineWidth, color);
}

QStringList symbolNames() {
    QStringList names = makers().keys();
    names.sort();
    return names;
}

} // namespace quillmender
