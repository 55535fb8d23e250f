#pragma once

#include "platform/Secrets.h"

namespace quillmender {

/// No secret store: nothing is found and nothing is kept.
class NoneSecrets : public Secrets {
  public:
    QCoro::Task<SecretSearch> find(QString, QString) override {
        co_return SecretSearch{
            SecretOutcome::unavailable, {}, QStringLiteral("there is no secret store")};
    }
    void store(const QString &, const QString &, const QByteArray &) override {}
    void remove(const QString &, const QString &) override {}
};

} // namespace quillmender
