#pragma once

#include "platform/Secrets.h"

namespace quillmender {

/// Generic passwords in the user's keychain. Every call completes at once, unless the system itself
/// asks the user first.
class MacSecrets : public Secrets {
  public:
    QCoro::Task<SecretSearch> find(QString service, QString account) override;
    void store(const QString &service, const QString &account, const QByteArray &secret) override;
    void remove(const QString &service, const QString &account) override;
};

} // namespace quillmender
