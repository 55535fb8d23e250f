#pragma once

#include "desktop/services/FakeStatusWatcher.h"

#include <QDBusConnection>
#include <QStringList>
#include <QVariantMap>

namespace quillmender {

/// One line of an item's menu, as the bus tells it (com.canonical.dbusmenu).
struct MenuLine {
    int id = 0;
    QVariantMap properties;

    QString label() const { return properties.value(QStringLiteral("label")).toString(); }
    bool isVisible() const { return properties.value(QStringLiteral("visible"), true).toBool(); }
    /// Keys joined by "+"; empty when it shows none.
    QString shortcut() const;
};

/// A status area of our own: the watcher that items register with, and the host that reads them.
class StatusHost {
  public:
    /// Owns the watcher's name on the bus while it lives.
    explicit StatusHost(const QString &busAddress);
    StatusHost(const StatusHost &) = delete;
    StatusHost &operator=(const StatusHost &) = delete;
    ~StatusHost();

    /// The bus names of the items that are there now.
    QStringList items() const;
    /// Of the only item; waits for it.
    QString waitForItem() const;

    QVariant property(const QString &item, const QString &name) const;
    QList<MenuLine> menu(const QString &item) const;
    /// As a host does when the user clicks on the item itself.
    void activate(const QString &item) const;
    /// As a host does when the user picks a line.
    void pick(const QString &item, int line) const;

  private:
    FakeStatusWatcher watcher_;
    QDBusConnection bus_;
};

} // namespace quillmender
