#pragma once

#include <QKeyCombination>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace quillmender {

struct StatusMenuItem {
    QString title;
    /// Shown beside the title. ControlModifier and AltModifier are the keys of those names (Option
    /// on a Mac), MetaModifier is the key of menu shortcuts: Command on a Mac, Control elsewhere.
    std::optional<QKeyCombination> shortcut;
    bool hidden = false;
    std::function<void()> handler;
};

struct StatusItemContents {
    QString symbol;
    QString accessibilityDescription;
    QString toolTip;
    QList<StatusMenuItem> menu;
};

/// The program's item in the desktop's status area, with its menu.
class StatusItem {
  public:
    StatusItem() = default;
    StatusItem(const StatusItem &) = delete;
    StatusItem &operator=(const StatusItem &) = delete;
    virtual ~StatusItem() = default;

    /// Shows the item as soon as, and whenever, the desktop has a status area, in place of what was
    /// shown before.
    virtual void show(const StatusItemContents &contents) = 0;

    /// Nothing happens when there is no such item in the menu.
    virtual void updateMenuItem(int index, const QString &title, bool hidden) = 0;
};

} // namespace quillmender
