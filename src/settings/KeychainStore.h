#pragma once

#include "platform/Secrets.h"

#include <QString>

#include <optional>

namespace quillmender {

/// What a search in the keychain brought.
struct KeychainReading {
    std::optional<QString> text; ///< absent when there is no such item or it is not UTF-8
    bool wasAnswered = true;     ///< false when the keychain could not be asked, or stayed locked
};

/// One text for each service and account in the user's keychain. Failures are silent, but for the
/// log: a secret that cannot be read is absent, one that cannot be written is not kept.
class KeychainStore {
  public:
    explicit KeychainStore(Secrets &secrets) : secrets_(secrets) {}

    /// Completes when the keychain has answered. The store may be gone by then.
    QCoro::Task<KeychainReading> read(QString service, QString account);

    /// Replaces the item.
    void write(const QString &value, const QString &service, const QString &account);

    void remove(const QString &service, const QString &account);

  private:
    Secrets &secrets_;
};

} // namespace quillmender
