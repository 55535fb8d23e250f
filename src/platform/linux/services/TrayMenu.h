#pragma once

#include "platform/StatusItem.h"

#include <QMenu>

namespace quillmender {

/// The menu of the status item. Its shortcuts are shown, they do not act.
class TrayMenu : public QMenu {
    Q_OBJECT

  public:
    explicit TrayMenu(const QList<StatusMenuItem> &items);

    /// Does nothing when there is no such item.
    void update(int index, const QString &title, bool hidden);
};

} // namespace quillmender
