#pragma once

#include "bench/Samples.h"

#include <QDBusConnection>
#include <QObject>

namespace quillmender::bench {

/// The desktop's status area: programs register their items with it.
class StatusNotifierHost : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

  public:
    /// Owns the watcher's name while it lives.
    explicit StatusNotifierHost(const QDBusConnection &bus);
    ~StatusNotifierHost() override;

    bool isHostRegistered() const { return true; }
    int protocolVersion() const { return 0; }

    int registrations() const { return registrations_; }
    TimePoint lastRegistration() const { return lastRegistration_; }

  public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service);

  Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString &service);

  private:
    QDBusConnection bus_;
    int registrations_ = 0;
    TimePoint lastRegistration_;
};

} // namespace quillmender::bench
