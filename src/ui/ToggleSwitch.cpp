#include "ui/ToggleSwitch.h"

#include "ui/TextStyle.h"
#include "ui/style/Metrics.h"

namespace quillmender {

ToggleSwitch::ToggleSwitch(Theme &theme, const QString &text, QWidget *parent)
    : QCheckBox(text, parent) {
    setFont(fontFor(TextStyle::body));
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QSize ToggleSwitch::minimumSizeHint() const {
    return QSize(grown(metrics::switchTrack.width()) + metrics::switchGap, sizeHint().height());
}

} // namespace quillmender
