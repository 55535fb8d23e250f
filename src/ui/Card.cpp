#include "ui/Card.h"

#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <QPainter>

namespace quillmender {

Card::Card(Theme &theme, QWidget *parent)
    : QWidget(parent),
      theme_(theme),
      stack_(new QVBoxLayout(this)) {
    setPadding(metrics::cardTextPadding, metrics::cardTextPadding);
    stack_->setSpacing(0);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void Card::setPadding(int top, int bottom) {
    stack_->setContentsMargins(metrics::cardPadding, top, metrics::cardPadding, bottom);
}

void Card::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    Look look;
    look.fill = theme_.colors().card;
    look.outline = theme_.colors().cardOutline;
    drawing::surface(painter, rect(), metrics::cardRadius, look);
}

} // namespace quillmender
