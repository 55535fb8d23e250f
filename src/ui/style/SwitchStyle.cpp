#include "ui/style/SwitchStyle.h"

#include "ui/TextStyle.h"
#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <QStyleOptionButton>

#include <algorithm>

namespace quillmender::switchStyle {

QSize trackSize() {
    return QSize(grown(metrics::switchTrack.width()), grown(metrics::switchTrack.height()));
}

QSize sizeOf(const QStyleOptionButton &option) {
    return QSize(option.fontMetrics.horizontalAdvance(option.text) + 1 + metrics::switchGap +
                     trackSize().width() + metrics::switchMargin,
                 std::max(grown(metrics::switchHeight),
                          option.fontMetrics.height() + metrics::switchTextRoom));
}

QRect trackOf(const QStyleOptionButton &option) {
    const QRect &area = option.rect;
    const QSize track = trackSize();
    return QRect(QPoint(area.right() + 1 - track.width() - metrics::switchMargin,
                        area.top() + (area.height() - track.height()) / 2),
                 track);
}

QRect textAreaOf(const QStyleOptionButton &option) {
    QRect area = option.rect;
    area.setRight(trackOf(option).left() - metrics::switchGap);
    return area;
}

void draw(QPainter &painter, const QStyleOptionButton &option, const Colors &colors) {
    const bool on = option.state & QStyle::State_On;
    const State state = drawing::stateOf(option);
    const QRect text = textAreaOf(option);
    painter.setPen(lookOf(Part::label, state, colors).text);
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     option.fontMetrics.elidedText(option.text, Qt::ElideRight, text.width()));

    const Look look = lookOf(on ? Part::switchOn : Part::switchOff, state, colors);
    const QRectF track = trackOf(option);
    drawing::surface(painter, track, track.height() / 2, look);
    const int inset = grown(metrics::switchKnobInset);
    const qreal knob = track.height() - 2 * inset;
    const qreal left = on ? track.right() - inset - knob : track.left() + inset;
    painter.setBrush(look.symbol);
    painter.drawEllipse(drawing::onPixels(painter, QRectF(left, track.top() + inset, knob, knob)));
    if (option.state & QStyle::State_HasFocus) {
        const qreal out = metrics::switchMargin;
        const QRectF around = track.adjusted(-out, -out, out, out);
        drawing::ring(painter, around, around.height() / 2, look.ring);
    }
}

} // namespace quillmender::switchStyle
