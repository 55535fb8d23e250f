#include "ui/PopUpButton.h"

#include "ui/TextStyle.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int smallestHeight = 32;
constexpr int padding = 12;
constexpr int chevronArea = 28;
constexpr qreal cornerRadius = 8;
} // namespace

PopUpButton::PopUpButton(Theme &theme, QWidget *parent) : QComboBox(parent), theme_(theme) {
    setFont(fontFor(TextStyle::body));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QSize PopUpButton::sizeHint() const {
    int widest = 120;
    for (int i = 0; i < count(); ++i)
        widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(i)) + 1);
    return QSize(widest + padding + chevronArea,
                 std::max(smallestHeight, fontMetrics().height() + 12));
}

QSize PopUpButton::minimumSizeHint() const {
    return QSize(80, sizeHint().height());
}

void PopUpButton::paintEvent(QPaintEvent *) {
    const Colors &colors = theme_.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal width = hasFocus() ? 2 : 1;
    const qreal inset = width / 2;
    painter.setPen(QPen(hasFocus() ? colors.accentMark : colors.controlOutline, width));
    painter.setBrush(underMouse() && colors.control.lightness() > 128 ? colors.control.darker(106)
                     : underMouse()                                   ? colors.control.lighter(112)
                                                                      : colors.control);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                            cornerRadius - inset, cornerRadius - inset);

    const auto mirrored = [this](const QRect &area) {
        return QStyle::visualRect(layoutDirection(), rect(), area);
    };
    painter.setPen(colors.text);
    painter.drawText(mirrored(rect().adjusted(padding, 0, -chevronArea, 0)),
                     Qt::AlignVCenter | Qt::TextSingleLine |
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     currentText());

    const QRect area =
        mirrored(QRect(rect().right() - chevronArea, 0, chevronArea, this->height()));
    const QPointF middle = QRectF(area).center();
    painter.setPen(QPen(colors.secondary, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const qreal way : {-1.0, 1.0})
        painter.drawPolyline(
            QPolygonF({middle + QPointF(-3.5, 2.5 * way), middle + QPointF(0, 6 * way),
                       middle + QPointF(3.5, 2.5 * way)}));
}

void PopUpButton::wheelEvent(QWheelEvent *event) {
    event->ignore();
}

} // namespace quillmender
