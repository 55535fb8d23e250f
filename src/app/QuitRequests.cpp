#include "app/QuitRequests.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace quillmender {

QuitRequests::QuitRequests(std::function<void()> requested) : requested_(std::move(requested)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool QuitRequests::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance())
        return false;
    event->accept();
    requested_();
    return true;
}

} // namespace quillmender
