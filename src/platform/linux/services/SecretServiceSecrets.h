#pragma once

#include "platform/Secrets.h"
#include "platform/linux/services/SerialWorker.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace quillmender {

class SecretService;

/// Passwords in the desktop's Secret Service (org.freedesktop.secrets), found by the attributes
/// `service` and `account` alone. Every operation runs on one worker in the order in which it was
/// called, except that a change drops what still waits to be done to the same item: however slow
/// the service is, it never lags behind more than one change of each. The log has why a change did
/// not work; a problem that goes on is told once.
class SecretServiceSecrets : public Secrets {
  public:
    /// Destruction waits `lastWait` at most for what was accepted to be written. `library` is
    /// loaded with the first operation; without it every search finds the store unavailable.
    explicit SecretServiceSecrets(std::chrono::milliseconds lastWait = std::chrono::seconds(3),
                                  const QString &library = QStringLiteral("secret-1"));
    ~SecretServiceSecrets() override;

    QCoro::Task<SecretSearch> find(QString service, QString account) override;
    void store(const QString &service, const QString &account, const QByteArray &secret) override;
    void remove(const QString &service, const QString &account) override;

  private:
    using Job = std::function<void(SecretService &)>;

    void enqueue(Job job, const std::string &subject = {});
    void change(const QString &service, const QString &account, Job job);

    std::chrono::milliseconds lastWait_;
    std::unique_ptr<SecretService> service_;
    SerialWorker worker_;
};

} // namespace quillmender
