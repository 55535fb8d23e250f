#include "platform/linux/services/TrayMenu.h"

#include <QKeySequence>

namespace quillmender {

namespace {

QString literalTitle(QString title) {
    return title.replace(u'&', QStringLiteral("&&"));
}

// The key of menu shortcuts is Control here.
QKeySequence sequenceOf(QKeyCombination shortcut) {
    Qt::KeyboardModifiers modifiers = shortcut.keyboardModifiers();
    if (modifiers.testFlag(Qt::MetaModifier))
        modifiers = (modifiers & ~Qt::MetaModifier) | Qt::ControlModifier;
    return QKeyCombination(modifiers, shortcut.key());
}

} // namespace

TrayMenu::TrayMenu(const QList<StatusMenuItem> &items) {
    for (const StatusMenuItem &item : items) {
        QAction *action = addAction(literalTitle(item.title));
        if (item.shortcut)
            action->setShortcut(sequenceOf(*item.shortcut));
        action->setShortcutVisibleInContextMenu(true);
        action->setVisible(!item.hidden);
        if (item.handler)
            connect(action, &QAction::triggered, this, item.handler);
    }
}

void TrayMenu::update(int index, const QString &title, bool hidden) {
    const QList<QAction *> all = actions();
    if (index < 0 || index >= all.size())
        return;
    all[index]->setText(literalTitle(title));
    all[index]->setVisible(!hidden);
}

} // namespace quillmender
