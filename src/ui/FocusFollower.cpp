#include "ui/FocusFollower.h"

#include "ui/ScrollRegion.h"

#include <QApplication>
#include <QKeyEvent>

#include <utility>

namespace quillmender {

FocusFollower::FocusFollower(ScrollRegion &region) : region_(region) {
    QCoreApplication::instance()->installEventFilter(this);
}

void FocusFollower::expect(QWidget *control) {
    last_ = control;
    waitsForRelease_ = false;
    isDue_ = false;
}

bool FocusFollower::eventFilter(QObject *watched, QEvent *event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::FocusIn && watched->isWidgetType()) {
        focusCame(static_cast<QWidget *>(watched), static_cast<QFocusEvent *>(event)->reason());
    } else if (type == QEvent::KeyPress && watched == QApplication::focusWidget()) {
        // Keys without a text are modifiers and those that scroll.
        if (!static_cast<QKeyEvent *>(event)->text().isEmpty())
            follow();
    } else if (type == QEvent::MouseButtonRelease && std::exchange(waitsForRelease_, false)) {
        // Not before the control that was pressed has been released where it is.
        isDue_ = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (std::exchange(isDue_, false))
                    follow();
            },
            Qt::QueuedConnection);
    }
    return false;
}

void FocusFollower::focusCame(QWidget *control, Qt::FocusReason reason) {
    if (control->window() != region_.window())
        return;
    const bool isAnother = last_ != control;
    last_ = control;
    if (!isAnother && (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason))
        return;
    if (QApplication::mouseButtons() == Qt::NoButton)
        follow();
    else
        waitsForRelease_ = true;
}

void FocusFollower::follow() {
    const QWidget *control = QApplication::focusWidget();
    if (control && control->isEnabled() && region_.widget()->isAncestorOf(control))
        region_.reveal(control);
}

} // namespace quillmender
