#pragma once

#include "platform/SecretItems.h"

namespace quillmender {

/// The user's keychain. Every call completes at once, unless the system itself asks the user first.
class MacSecretItems : public SecretItems {
  public:
    QCoro::Task<SecretMatch> copyMatching(SecretAttributes query) override;
    qint32 add(const SecretAttributes &attributes) override;
    qint32 remove(const SecretAttributes &query) override;
};

} // namespace quillmender
