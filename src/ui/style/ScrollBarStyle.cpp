#include "ui/style/ScrollBarStyle.h"

#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <QStyleOptionSlider>

#include <algorithm>

namespace quillmender::scrollBarStyle {

namespace {

/// A part from `from` to `to` along the bar, across all of it.
QRect across(const QStyleOptionSlider &option, int from, int to) {
    const QRect &bar = option.rect;
    return option.orientation == Qt::Vertical
               ? QRect(bar.left(), bar.top() + from, bar.width(), to - from)
               : QRect(bar.left() + from, bar.top(), to - from, bar.height());
}

} // namespace

QRect partOf(const QStyleOptionSlider &option, QStyle::SubControl part) {
    const int length =
        option.orientation == Qt::Vertical ? option.rect.height() : option.rect.width();
    const int track = std::max(0, length - 2 * metrics::scrollEndMargin);
    const qint64 range = qint64(option.maximum) - option.minimum;
    const qint64 all = range + option.pageStep;
    const int proportional = all > 0 ? int(track * qint64(option.pageStep) / all) : track;
    const int thumb = std::min(track, std::max(metrics::shortestScrollThumb, proportional));
    const int start =
        metrics::scrollEndMargin +
        QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                        track - thumb, option.upsideDown);
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return across(option, start, start + thumb);
    case QStyle::SC_ScrollBarSubPage:
        return across(option, 0, start);
    case QStyle::SC_ScrollBarAddPage:
        return across(option, start + thumb, length);
    case QStyle::SC_ScrollBarGroove:
        return across(option, metrics::scrollEndMargin, metrics::scrollEndMargin + track);
    default:
        return {};
    }
}

void draw(QPainter &painter, const QStyleOptionSlider &option, const Colors &colors) {
    if (option.maximum <= option.minimum)
        return;
    const bool grasped = option.activeSubControls & QStyle::SC_ScrollBarSlider &&
                         option.state & QStyle::State_Sunken;
    const bool pointed = option.state & QStyle::State_MouseOver;
    const State state = grasped ? State::pressed : pointed ? State::hovered : State::rest;
    const QRectF area = partOf(option, QStyle::SC_ScrollBarSlider);
    const bool upright = option.orientation == Qt::Vertical;
    const qreal spare =
        ((upright ? area.width() : area.height()) - metrics::scrollThumbBreadth) / 2;
    const QRectF thumb =
        upright ? area.adjusted(spare, 0, -spare, 0) : area.adjusted(0, spare, 0, -spare);
    drawing::surface(painter, thumb, metrics::scrollThumbBreadth / 2.0,
                     lookOf(Part::scrollThumb, state, colors));
}

} // namespace quillmender::scrollBarStyle
