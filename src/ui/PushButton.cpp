#include "ui/PushButton.h"

#include "ui/TextStyle.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int horizontalPadding = 16;
constexpr int smallestHeight = 32;
constexpr qreal cornerRadius = 8;
constexpr double disabledOpacity = 0.4;
} // namespace

PushButton::PushButton(Theme &theme, const QString &caption, Prominence prominence, QWidget *parent)
    : Button(theme, parent),
      prominence_(prominence) {
    QFont font = fontFor(TextStyle::body);
    font.setWeight(QFont::Medium);
    setFont(font);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setCaption(caption);
}

QSize PushButton::sizeHint() const {
    const int width = fontMetrics().horizontalAdvance(caption()) + 1 + 2 * horizontalPadding;
    const int height = std::max(smallestHeight, fontMetrics().height() + 12);
    return QSize(std::max(width, 72), height);
}

QSize PushButton::minimumSizeHint() const {
    return QSize(48, sizeHint().height());
}

int PushButton::captionWidth() const {
    return width() - 2 * std::min(horizontalPadding, width() / 8);
}

QString PushButton::unreadablePart() const {
    return fontMetrics().horizontalAdvance(caption()) > captionWidth() ? caption() : QString();
}

QColor PushButton::fill() const {
    const Colors &colors = theme_.colors();
    const QColor base = prominence_ == Prominence::prominent ? colors.accent : colors.control;
    if (isDown())
        return base.lightness() > 128 ? base.darker(118) : base.lighter(125);
    if (isHovered())
        return base.lightness() > 128 ? base.darker(106) : base.lighter(112);
    return base;
}

QColor PushButton::captionColor() const {
    const Colors &colors = theme_.colors();
    switch (prominence_) {
    case Prominence::standard:
        return colors.text;
    case Prominence::prominent:
        return colors.onAccent;
    case Prominence::destructive:
        return colors.error;
    }
    return colors.text;
}

void PushButton::mouseDoubleClickEvent(QMouseEvent *event) {
    if (prominence_ == Prominence::destructive)
        event->accept();
    else
        Button::mouseDoubleClickEvent(event);
}

void PushButton::paintEvent(QPaintEvent *) {
    const Colors &colors = theme_.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool prominent = prominence_ == Prominence::prominent;
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    painter.setPen(prominent ? QPen(Qt::NoPen) : QPen(colors.controlOutline));
    painter.setBrush(fill());
    const qreal edge = prominent ? 0 : 0.5;
    painter.drawRoundedRect(QRectF(rect()).adjusted(edge, edge, -edge, -edge), cornerRadius,
                            cornerRadius);
    if (hasFocus()) {
        const qreal inset = prominent ? 3 : 1;
        painter.setPen(QPen(prominent ? colors.onAccent : colors.accentMark, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                                cornerRadius - inset, cornerRadius - inset);
    }
    painter.setPen(captionColor());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(caption(), Qt::ElideRight, captionWidth()));
}

} // namespace quillmender
