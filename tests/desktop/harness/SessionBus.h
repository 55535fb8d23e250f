#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QDBusConnection>

namespace quillmender::harness {

/// A D-Bus session bus. It starts by itself only the services that it is given.
class SessionBus {
  public:
    /// Writes its configuration into `folder`, and its socket. `services` are the D-Bus service
    /// files of what it starts when it is called; the environment is also theirs.
    SessionBus(const QString &folder, const QProcessEnvironment &environment,
               const QString &logFile, const QStringList &services = {});
    SessionBus(const SessionBus &) = delete;
    SessionBus &operator=(const SessionBus &) = delete;
    ~SessionBus();

    const QString &address() const { return address_; }

    /// A connection of the test's own.
    const QDBusConnection &connection() const { return connection_; }

    bool hasOwner(const QString &name) const;
    void waitForOwner(const QString &name) const;

  private:
    ChildProcess process_;
    QString address_;
    QDBusConnection connection_;
};

} // namespace quillmender::harness
