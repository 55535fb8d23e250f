#pragma once

#include "platform/Presence.h"

#include <QKeySequence>
#include <QMenu>

namespace quillmender {

/// The key sequence that stands for a key equivalent; Command is Control here.
QKeySequence keySequence(const QString &keyEquivalent, quint32 modifiers);

/// The menu of the status item. Its shortcuts are shown, they do not act.
class StatusMenu : public QMenu {
    Q_OBJECT

  public:
    explicit StatusMenu(const QList<StatusMenuItem> &items);

    /// Does nothing when there is no such item.
    void update(int index, const QString &title, bool hidden);
};

} // namespace quillmender
