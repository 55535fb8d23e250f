#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>

namespace quillmender {

enum class SecretOutcome {
    found,
    absent,
    /// The store could not be asked or stayed locked, so that asking again later makes sense.
    unavailable,
};

/// What a search in the secret store came to.
struct SecretSearch {
    SecretOutcome outcome = SecretOutcome::absent;
    QByteArray secret; ///< when it is found
    QString reason;    ///< for the log, why nothing could be read; empty when nothing is there
};

/// Passwords in the user's own secret store (keychain; on Linux the Secret Service), one for each
/// service and account. Where the store is another program that may be slow, or ask the user to
/// unlock it, nothing here waits for it: changes are accepted, and carried out in their order. What
/// fails of them is silent, but for the log. A secret never reaches a log.
class Secrets {
  public:
    Secrets() = default;
    Secrets(const Secrets &) = delete;
    Secrets &operator=(const Secrets &) = delete;
    virtual ~Secrets() = default;

    /// Completes when the store has answered, which may take as long as a user takes to unlock it.
    virtual QCoro::Task<SecretSearch> find(QString service, QString account) = 0;

    /// Replaces the secret: a deletion, then an addition, so that its attributes are new as well.
    virtual void store(const QString &service, const QString &account,
                       const QByteArray &secret) = 0;

    virtual void remove(const QString &service, const QString &account) = 0;
};

} // namespace quillmender
