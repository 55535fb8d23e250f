#include "ui/Announcer.h"

#include "ui/Accessibles.h"

#include <QAccessible>

namespace quillmender {

Announcer::Announcer(QWidget *parent) : QWidget(parent) {
    installAccessibles();
    hide();
}

void Announcer::say(const QString &text) {
    setAccessibleName(text);
    // The one event that screen readers take from an object that has not the focus.
    QAccessibleEvent appeared(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&appeared);
    Q_EMIT said(text);
}

} // namespace quillmender
