#include "ui/ToggleSwitch.h"

#include "ui/TextStyle.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int smallestHeight = 28;
constexpr QSize track(40, 24);
constexpr int gap = 12;
constexpr qreal knobInset = 3;
constexpr qreal ringWidth = 2;
constexpr double offOpacity = 0.55;
} // namespace

ToggleSwitch::ToggleSwitch(Theme &theme, const QString &text, QWidget *parent)
    : QCheckBox(text, parent),
      theme_(theme) {
    setFont(fontFor(TextStyle::body));
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QSize ToggleSwitch::sizeHint() const {
    const int width = fontMetrics().horizontalAdvance(text()) + 1 + gap + track.width() + 4;
    return QSize(width, std::max(smallestHeight, fontMetrics().height() + 8));
}

QSize ToggleSwitch::minimumSizeHint() const {
    return QSize(track.width() + gap, sizeHint().height());
}

bool ToggleSwitch::hitButton(const QPoint &position) const {
    return rect().contains(position);
}

void ToggleSwitch::paintEvent(QPaintEvent *) {
    const Colors &colors = theme_.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto mirrored = [this](const QRect &area) {
        return QStyle::visualRect(layoutDirection(), rect(), area);
    };
    painter.setPen(colors.text);
    painter.drawText(mirrored(rect().adjusted(0, 0, -track.width() - gap, 0)),
                     Qt::AlignVCenter | Qt::TextSingleLine |
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     text());

    const int margin = int(2 * ringWidth) - 1;
    const QRectF area =
        mirrored(QRect(width() - track.width() - margin, (height() - track.height()) / 2,
                       track.width(), track.height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? colors.accentMark : withOpacity(colors.secondary, offOpacity));
    painter.drawRoundedRect(area, area.height() / 2, area.height() / 2);
    const qreal knob = area.height() - 2 * knobInset;
    const bool atRight = isChecked() == (layoutDirection() == Qt::LeftToRight);
    painter.setBrush(isChecked() && colors.accentMark.lightness() > 160 ? colors.window
                                                                        : QColor(Qt::white));
    painter.drawEllipse(QRectF(atRight ? area.right() - knobInset - knob : area.left() + knobInset,
                               area.top() + knobInset, knob, knob));
    if (hasFocus()) {
        painter.setPen(QPen(colors.accentMark, ringWidth));
        painter.setBrush(Qt::NoBrush);
        const QRectF ring = area.adjusted(-ringWidth, -ringWidth, ringWidth, ringWidth);
        painter.drawRoundedRect(ring, ring.height() / 2, ring.height() / 2);
    }
}

} // namespace quillmender
