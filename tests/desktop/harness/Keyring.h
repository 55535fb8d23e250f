#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QDBusConnection>

namespace quillmender::harness {

class SessionBus;

/// A secret service whose keyring is unlocked; constructed means that it stores and finds secrets.
class Keyring {
  public:
    Keyring(SessionBus &session, const QProcessEnvironment &environment, const QString &logFile);

    /// Puts a secret under the two attributes, replacing one that is there.
    void store(const QString &service, const QString &account, const QByteArray &secret);

    /// Empty when there is none.
    QByteArray lookup(const QString &service, const QString &account) const;

    void clear(const QString &service, const QString &account);

    /// Locks the keyring with everything in it. There is nobody to unlock it but `unlock()`.
    void lock();
    void unlock();

    ChildProcess &process() { return process_; }

  private:
    QDBusConnection bus_;
    QProcessEnvironment environment_;
    ChildProcess process_;
};

} // namespace quillmender::harness
