#include "ui/settings/RowButton.h"

#include <QPainter>

namespace quillmender {

void RowButton::setQuiet(bool isQuiet) {
    if (isQuiet == isQuiet_)
        return;
    isQuiet_ = isQuiet;
    update();
}

void RowButton::paintEvent(QPaintEvent *event) {
    if (!isQuiet_) {
        PushButton::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(theme_.colors().secondary);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(caption(), Qt::ElideRight, width()));
}

} // namespace quillmender
