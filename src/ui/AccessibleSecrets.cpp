#include "ui/AccessibleSecrets.h"

#include <QAccessible>
#include <QLineEdit>

namespace quillmender {

namespace {

void announce(QAccessibleEvent *event);

void passOn(QAccessibleEvent *event) {
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(announce);
}

QString bullets(const QString &text) {
    return QString(text.size(), QChar(0x2022));
}

bool isPassword(const QAccessibleEvent &event) {
    const auto *field = qobject_cast<QLineEdit *>(event.object());
    return field && field->echoMode() != QLineEdit::Normal;
}

void announce(QAccessibleEvent *event) {
    if (!isPassword(*event)) {
        passOn(event);
        return;
    }
    if (event->type() == QAccessible::TextInserted) {
        const auto *inserted = static_cast<QAccessibleTextInsertEvent *>(event);
        QAccessibleTextInsertEvent masked(event->object(), inserted->changePosition(),
                                          bullets(inserted->textInserted()));
        masked.setCursorPosition(inserted->cursorPosition());
        passOn(&masked);
    } else if (event->type() == QAccessible::TextRemoved) {
        const auto *removed = static_cast<QAccessibleTextRemoveEvent *>(event);
        QAccessibleTextRemoveEvent masked(event->object(), removed->changePosition(),
                                          bullets(removed->textRemoved()));
        masked.setCursorPosition(removed->cursorPosition());
        passOn(&masked);
    } else if (event->type() == QAccessible::TextUpdated) {
        const auto *updated = static_cast<QAccessibleTextUpdateEvent *>(event);
        QAccessibleTextUpdateEvent masked(event->object(), updated->changePosition(),
                                          bullets(updated->textRemoved()),
                                          bullets(updated->textInserted()));
        masked.setCursorPosition(updated->cursorPosition());
        passOn(&masked);
    } else if (event->type() != QAccessible::ValueChanged) {
        passOn(event);
    }
}

} // namespace

void hideSecretsFromAccessibility() {
    QAccessible::installUpdateHandler(announce);
}

} // namespace quillmender
