#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>

#include <map>
#include <optional>
#include <variant>

namespace quillmender {

enum class SecretAttribute {
    itemClass,  ///< QString: `genericPassword`
    service,    ///< QString
    account,    ///< QString
    valueData,  ///< QByteArray: the secret
    accessible, ///< QString: `accessibleAfterFirstUnlock`
    returnData, ///< bool
    matchLimit, ///< QString: `matchLimitOne`
};

using SecretValue = std::variant<bool, QString, QByteArray>;
using SecretAttributes = std::map<SecretAttribute, SecretValue>;

namespace secret {
inline constexpr auto genericPassword = "genp";
inline constexpr auto accessibleAfterFirstUnlock = "ck";
inline constexpr auto matchLimitOne = "m_LimitOne";

inline constexpr qint32 success = 0;
inline constexpr qint32 notAvailable = -25291;
inline constexpr qint32 duplicateItem = -25299;
inline constexpr qint32 itemNotFound = -25300;
inline constexpr qint32 interactionNotAllowed = -25308;
} // namespace secret

struct SecretMatch {
    qint32 status = secret::itemNotFound;
    /// Absent also when the store answered with something that is not a buffer of bytes.
    std::optional<QByteArray> data;
};

/// Passwords in the user's own secret store (keychain; on Linux the Secret Service), found by the
/// attributes service and account. Where the store is another program that may be slow, or ask the
/// user to unlock it, nothing here waits for it: additions and deletions are accepted, and carried
/// out in their order. A secret never reaches a log.
class SecretItems {
  public:
    SecretItems() = default;
    SecretItems(const SecretItems &) = delete;
    SecretItems &operator=(const SecretItems &) = delete;
    virtual ~SecretItems() = default;

    /// Completes when the store has answered, which may take as long as a user takes to unlock it.
    /// The status is `notAvailable` or `interactionNotAllowed` when the store could not be asked or
    /// stayed locked, so that asking again later makes sense.
    virtual QCoro::Task<SecretMatch> copyMatching(SecretAttributes query) = 0;

    /// `duplicateItem` when one with the same service and account exists.
    virtual qint32 add(const SecretAttributes &attributes) = 0;

    /// Deletes every item that matches.
    virtual qint32 remove(const SecretAttributes &query) = 0;
};

} // namespace quillmender
