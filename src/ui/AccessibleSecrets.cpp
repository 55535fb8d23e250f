#include "ui/AccessibleSecrets.h"

#include <QLineEdit>

namespace quillmender {

namespace {

QString bullets(const QString &text) {
    return QString(text.size(), QChar(0x2022));
}

bool isPassword(const QAccessibleEvent &event) {
    const auto *field = qobject_cast<QLineEdit *>(event.object());
    return field && field->echoMode() != QLineEdit::Normal;
}

} // namespace

void announceWithoutSecrets(QAccessibleEvent *event, QAccessible::UpdateHandler announce) {
    if (!isPassword(*event)) {
        announce(event);
        return;
    }
    if (event->type() == QAccessible::TextInserted) {
        const auto *inserted = static_cast<QAccessibleTextInsertEvent *>(event);
        QAccessibleTextInsertEvent masked(event->object(), inserted->changePosition(),
                                          bullets(inserted->textInserted()));
        masked.setCursorPosition(inserted->cursorPosition());
        announce(&masked);
    } else if (event->type() == QAccessible::TextRemoved) {
        const auto *removed = static_cast<QAccessibleTextRemoveEvent *>(event);
        QAccessibleTextRemoveEvent masked(event->object(), removed->changePosition(),
                                          bullets(removed->textRemoved()));
        masked.setCursorPosition(removed->cursorPosition());
        announce(&masked);
    } else if (event->type() == QAccessible::TextUpdated) {
        const auto *updated = static_cast<QAccessibleTextUpdateEvent *>(event);
        QAccessibleTextUpdateEvent masked(event->object(), updated->changePosition(),
                                          bullets(updated->textRemoved()),
                                          bullets(updated->textInserted()));
        masked.setCursorPosition(updated->cursorPosition());
        announce(&masked);
    } else if (event->type() != QAccessible::ValueChanged) {
        announce(event);
    }
}

} // namespace quillmender
