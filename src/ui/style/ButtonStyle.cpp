#include "ui/style/ButtonStyle.h"

#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <algorithm>

namespace quillmender::buttonStyle {

QSize sizeOf(const QStyleOptionButton &option) {
    const int caption = option.fontMetrics.horizontalAdvance(option.text) + 1;
    return QSize(
        std::max(caption + 2 * metrics::buttonPadding, metrics::buttonWidth),
        std::max(metrics::controlHeight, option.fontMetrics.height() + metrics::controlTextRoom));
}

int captionWidth(int buttonWidth) {
    return buttonWidth - 2 * std::min(metrics::buttonPadding, buttonWidth / 8);
}

void draw(QPainter &painter, const QStyleOptionButton &option, const Colors &colors) {
    const auto *ours = qstyleoption_cast<const PushButtonOption *>(&option);
    const Look look = lookOf(ours ? ours->part : Part::button, drawing::stateOf(option), colors);
    drawing::focusable(painter, option.rect, metrics::controlRadius, look,
                       option.state & QStyle::State_HasFocus);
    painter.setPen(look.text);
    painter.drawText(option.rect, Qt::AlignCenter | Qt::TextSingleLine,
                     option.fontMetrics.elidedText(option.text, Qt::ElideRight,
                                                   captionWidth(option.rect.width())));
}

} // namespace quillmender::buttonStyle
