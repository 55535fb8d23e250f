#include "ui/SlimScrollBar.h"

namespace quillmender {

SlimScrollBar::SlimScrollBar(Theme &theme, QWidget *parent) : QScrollBar(Qt::Vertical, parent) {
    setFocusPolicy(Qt::NoFocus);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

} // namespace quillmender
