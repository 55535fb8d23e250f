#include "ui/PopUpButton.h"

#include "ui/TextStyle.h"
#include "ui/style/Metrics.h"

#include <QWheelEvent>

namespace quillmender {

PopUpButton::PopUpButton(Theme &theme, QWidget *parent) : QComboBox(parent) {
    setFont(fontFor(TextStyle::body));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QSize PopUpButton::minimumSizeHint() const {
    return QSize(metrics::narrowestField, sizeHint().height());
}

void PopUpButton::wheelEvent(QWheelEvent *event) {
    event->ignore();
}

} // namespace quillmender
