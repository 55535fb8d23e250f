#include "platform/linux/services/StatusMenu.h"

namespace quillmender {

namespace {

QString literalTitle(QString title) {
    return title.replace(u'&', QStringLiteral("&&"));
}

} // namespace

QKeySequence keySequence(const QString &keyEquivalent, quint32 modifiers) {
    if (keyEquivalent.isEmpty())
        return {};
    Qt::KeyboardModifiers held;
    if (modifiers & (controlModifier | commandModifier))
        held |= Qt::ControlModifier;
    if (modifiers & optionModifier)
        held |= Qt::AltModifier;
    const QChar key = keyEquivalent.front().toUpper();
    return QKeySequence(QKeyCombination(held, Qt::Key(key.unicode())));
}

StatusMenu::StatusMenu(const QList<StatusMenuItem> &items) {
    for (const StatusMenuItem &item : items) {
        QAction *action = addAction(literalTitle(item.title));
        action->setShortcut(keySequence(item.keyEquivalent, item.modifiers));
        action->setShortcutVisibleInContextMenu(true);
        action->setVisible(!item.hidden);
        if (item.handler)
            connect(action, &QAction::triggered, this, item.handler);
    }
}

void StatusMenu::update(int index, const QString &title, bool hidden) {
    const QList<QAction *> all = actions();
    if (index < 0 || index >= all.size())
        return;
    all[index]->setText(literalTitle(title));
    all[index]->setVisible(!hidden);
}

} // namespace quillmender
