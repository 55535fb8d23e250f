#include "ui/Spinner.h"

#include "ui/style/Look.h"

#include <QPainter>

namespace quillmender {

namespace {
constexpr int diameter = 16;
constexpr int spokes = 8;
constexpr int millisecondsPerStep = 100;
} // namespace

Spinner::Spinner(Theme &theme, QWidget *parent) : QWidget(parent), theme_(theme) {
    setFixedSize(diameter, diameter);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QSize Spinner::sizeHint() const {
    return QSize(diameter, diameter);
}

void Spinner::showEvent(QShowEvent *) {
    timer_.start(millisecondsPerStep, this);
}

void Spinner::hideEvent(QHideEvent *) {
    timer_.stop();
}

void Spinner::timerEvent(QTimerEvent *) {
    step_ = (step_ + 1) % spokes;
    update();
}

void Spinner::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = lookOf(Part::symbol, State::rest, theme_.colors()).symbol;
    painter.translate(diameter / 2.0, diameter / 2.0);
    painter.rotate(step_ * 360.0 / spokes);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const double opacity = 0.15 + 0.85 * spoke / (spokes - 1);
        painter.setPen(QPen(withOpacity(color, opacity), 1.75, Qt::SolidLine, Qt::RoundCap));
        painter.rotate(360.0 / spokes);
        painter.drawLine(QPointF(0, -3.5), QPointF(0, -6.75));
    }
}

} // namespace quillmender
