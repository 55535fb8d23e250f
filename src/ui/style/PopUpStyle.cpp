#include "ui/style/PopUpStyle.h"

#include "ui/TextStyle.h"
#include "ui/style/Drawing.h"
#include "ui/style/FieldStyle.h"
#include "ui/style/Metrics.h"

#include <algorithm>

namespace quillmender::popUpStyle {

namespace {

Look look(const QStyleOptionComboBox &option, const Colors &colors) {
    return lookOf(Part::popUpButton, drawing::stateOf(option), colors);
}

} // namespace

QSize sizeOf(const QStyleOptionComboBox &option, int textWidth) {
    // A text has its inset on either side, where it is not beside more room already.
    return QSize(std::max(textWidth + metrics::textInset, metrics::popUpWidth) +
                     metrics::textInset + grown(metrics::chevronArea),
                 fieldStyle::heightOf(option));
}

QRect partOf(const QStyleOptionComboBox &option, QStyle::SubControl part) {
    switch (part) {
    case QStyle::SC_ComboBoxEditField:
        return option.rect.adjusted(metrics::textInset, 0, -grown(metrics::chevronArea), 0);
    case QStyle::SC_ComboBoxArrow:
        return option.rect.adjusted(option.rect.width() - grown(metrics::chevronArea), 0, 0, 0);
    default:
        return option.rect;
    }
}

void drawButton(QPainter &painter, const QStyleOptionComboBox &option, const Colors &colors) {
    const Look colored = look(option, colors);
    drawing::focusable(painter, option.rect, metrics::controlRadius, colored,
                       option.state & QStyle::State_HasFocus);
    drawing::chevrons(painter, QRectF(partOf(option, QStyle::SC_ComboBoxArrow)).center(),
                      colored.symbol);
}

void drawLabel(QPainter &painter, const QStyleOptionComboBox &option, const Colors &colors) {
    const QRect area = partOf(option, QStyle::SC_ComboBoxEditField);
    painter.setPen(look(option, colors).text);
    painter.drawText(
        area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
        option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, area.width()));
}

} // namespace quillmender::popUpStyle
