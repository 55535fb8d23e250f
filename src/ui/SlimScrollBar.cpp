#include "ui/SlimScrollBar.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace quillmender {

namespace {
constexpr qreal thumbWidth = 6;
constexpr qreal shortestThumb = 24;
constexpr qreal endMargin = 2;
} // namespace

SlimScrollBar::SlimScrollBar(Theme &theme, QWidget *parent)
    : QScrollBar(Qt::Vertical, parent),
      theme_(theme) {
    setFixedWidth(breadth);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setFocusPolicy(Qt::NoFocus);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QSize SlimScrollBar::sizeHint() const {
    return QSize(breadth, 2 * breadth);
}

QRectF SlimScrollBar::thumb() const {
    const qreal track = height() - 2 * endMargin;
    const qreal range = maximum() - minimum();
    const qreal length =
        std::min(track, std::max(shortestThumb, track * pageStep() / (range + pageStep())));
    const qreal offset = range > 0 ? (track - length) * (value() - minimum()) / range : 0;
    return QRectF((width() - thumbWidth) / 2, endMargin + offset, thumbWidth, length);
}

void SlimScrollBar::paintEvent(QPaintEvent *) {
    if (maximum() <= minimum())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        withOpacity(theme_.colors().secondary, isSliderDown() ? 0.75 : (underMouse() ? 0.6 : 0.4)));
    painter.drawRoundedRect(thumb(), thumbWidth / 2, thumbWidth / 2);
}

void SlimScrollBar::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || maximum() <= minimum())
        return;
    const QRectF handle = thumb();
    const qreal y = event->position().y();
    if (y < handle.top() || y > handle.bottom()) {
        triggerAction(y < handle.top() ? SliderPageStepSub : SliderPageStepAdd);
        return;
    }
    grabOffset_ = int(y - handle.top());
    setSliderDown(true);
    update();
}

void SlimScrollBar::mouseMoveEvent(QMouseEvent *event) {
    if (!isSliderDown())
        return;
    const qreal room = height() - 2 * endMargin - thumb().height();
    if (room <= 0)
        return;
    const qreal share = (event->position().y() - grabOffset_ - endMargin) / room;
    setValue(minimum() + int(share * (maximum() - minimum())));
}

void SlimScrollBar::mouseReleaseEvent(QMouseEvent *) {
    setSliderDown(false);
    update();
}

} // namespace quillmender
