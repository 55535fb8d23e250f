#pragma once

#include <QDBusContext>
#include <QMutex>
#include <QObject>
#include <QStringList>
#include <QThread>

#include <memory>

namespace quillmender {

/// The object that status items register with.
class StatusWatcherObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

  public:
    explicit StatusWatcherObject(bool hasHost) : hasHost_(hasHost) {}

    bool hasHost() const;
    int protocolVersion() const { return 0; }
    QStringList items() const;
    void addHost();

  public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service);

  Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierItemRegistered(const QString &service);

  private:
    mutable QMutex mutex_;
    bool hasHost_;
    QStringList items_;
};

/// A status area on a thread and a connection of its own, as in another process: it answers while
/// the toolkit waits for it. Its name is on the bus as long as it lives.
class FakeStatusWatcher {
  public:
    /// On the session bus of this process unless told another one.
    explicit FakeStatusWatcher(bool hasHost = true, const QString &busAddress = {});
    ~FakeStatusWatcher();

    /// The bus names of the items that have registered.
    QStringList items() const { return object_->items(); }
    void addHost();

  private:
    QThread thread_;
    StatusWatcherObject *object_;
    QString connectionName_;
};

} // namespace quillmender
