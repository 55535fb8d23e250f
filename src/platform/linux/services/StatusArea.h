#pragma once

#include "platform/linux/WindowSystemTray.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace quillmender {

/// Says when the desktop has a status area: when `org.kde.StatusNotifierWatcher` is on the session
/// bus and has a host that shows items, or, without one, when the window system has a tray of its
/// own. Nothing here waits for another process.
class StatusArea : public QObject {
    Q_OBJECT

  public:
    /// `tray` may be null, and otherwise outlives this object.
    StatusArea(QDBusConnection bus, WindowSystemTray *tray);
    ~StatusArea() override;

    /// Begins to look. `appeared()` follows whenever a status area is found, perhaps never.
    void watch();

  Q_SIGNALS:
    void appeared();

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void askForHost();

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void lookForTray();

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    WindowSystemTray *tray_;
};

} // namespace quillmender
