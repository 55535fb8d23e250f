#include "ui/Button.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace quillmender {

Button::Button(Theme &theme, QWidget *parent) : QPushButton(parent), theme_(theme) {
    setAutoDefault(false);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_MacShowFocusRect, false);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void Button::setCaption(const QString &caption) {
    if (caption == accessibleName())
        return;
    setAccessibleName(caption);
    updateGeometry();
    update();
}

void Button::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QPushButton::keyPressEvent(event);
        return;
    }
    if (!event->isAutoRepeat())
        click();
}

bool Button::focusNextPrevChild(bool next) {
    // The toolkit asks for this when it disables the button that has the focus. Tab does not come
    // here then: a disabled button gets no keys.
    const bool isOnlyDisabled = !isEnabled() && !isHidden();
    return isOnlyDisabled || QPushButton::focusNextPrevChild(next);
}

bool Button::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return QPushButton::event(event);
    const QString text = unreadablePart();
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()), this);
    return true;
}

} // namespace quillmender
