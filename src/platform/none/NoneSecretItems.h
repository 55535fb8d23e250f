#pragma once

#include "platform/SecretItems.h"

namespace quillmender {

/// No secret store: nothing is found and nothing is kept.
class NoneSecretItems : public SecretItems {
  public:
    QCoro::Task<SecretMatch> copyMatching(SecretAttributes) override {
        co_return SecretMatch{secret::notAvailable, std::nullopt};
    }
    qint32 add(const SecretAttributes &) override { return secret::notAvailable; }
    qint32 remove(const SecretAttributes &) override { return secret::notAvailable; }
};

} // namespace quillmender
