#include "ui/Card.h"

#include "ui/style/Metrics.h"

#include <QPainter>

namespace quillmender {

namespace {
constexpr int padding = 16;
// The first and the last line have air of their own.
constexpr int verticalPadding = 8;
} // namespace

Card::Card(Theme &theme, QWidget *parent)
    : QWidget(parent),
      theme_(theme),
      stack_(new QVBoxLayout(this)) {
    stack_->setContentsMargins(padding, verticalPadding, padding, verticalPadding);
    stack_->setSpacing(0);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void Card::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme_.colors().cardOutline);
    painter.setBrush(theme_.colors().card);
    constexpr qreal edge = metrics::hairline / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(edge, edge, -edge, -edge), metrics::cardRadius,
                            metrics::cardRadius);
}

} // namespace quillmender
