#pragma once

#include <QAbstractNativeEventFilter>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace quillmender {

/// Says when the desktop has a status area: when `org.kde.StatusNotifierWatcher` is on the session
/// bus and has a host that shows items, or, without one, when the X server has a tray of the older
/// kind (System Tray Protocol). Nothing here waits for another process.
class StatusArea : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    explicit StatusArea(QDBusConnection bus);
    ~StatusArea() override;

    /// Begins to look. `appeared()` follows whenever a status area is found, perhaps never.
    void watch();

  Q_SIGNALS:
    void appeared();

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void askForHost();

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void lookForOlderTray();
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    quint32 managerAtom_ = 0;
};

} // namespace quillmender
