#include "ui/style/FieldStyle.h"

#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <algorithm>

namespace quillmender::fieldStyle {

int heightOf(const QStyleOption &option) {
    return std::max(metrics::controlHeight, option.fontMetrics.height() + metrics::controlTextRoom);
}

void drawField(QPainter &painter, const QStyleOption &option, const Colors &colors) {
    drawing::focusable(painter, option.rect, metrics::controlRadius,
                       lookOf(Part::field, drawing::stateOf(option), colors),
                       option.state & QStyle::State_HasFocus);
}

void drawEditor(QPainter &painter, const QStyleOption &option, const Colors &colors) {
    const Look look = lookOf(Part::editor, drawing::stateOf(option), colors);
    const bool focused = option.state & QStyle::State_HasFocus;
    drawing::focusable(painter, option.rect, metrics::editorRadius, look, focused);
    if (focused)
        return;
    Look soft;
    soft.outline = look.halo;
    const qreal within = metrics::hairline;
    drawing::surface(painter, QRectF(option.rect).adjusted(within, within, -within, -within),
                     metrics::editorRadius - within, soft);
}

} // namespace quillmender::fieldStyle
