#include "platform/macos/MacSecrets.h"

#include "platform/macos/CFConversions.h"

#include <Security/Security.h>
#include <utility>
#include <vector>

namespace quillmender {

namespace {

using Entry = std::pair<CFStringRef, CFRef<CFTypeRef>>;

CFRef<CFTypeRef> textOf(const QString &text) {
    return CFRef<CFTypeRef>::adopted(toCFString(text).release());
}

CFRef<CFTypeRef> constant(CFTypeRef value) {
    return CFRef<CFTypeRef>::retained(value);
}

// What every operation starts from.
std::vector<Entry> baseQuery(const QString &service, const QString &account) {
    std::vector<Entry> entries;
    entries.emplace_back(kSecClass, constant(kSecClassGenericPassword));
    entries.emplace_back(kSecAttrService, textOf(service));
    entries.emplace_back(kSecAttrAccount, textOf(account));
    return entries;
}

// Null when the system has no memory for it or for one of its values.
CFRef<CFDictionaryRef> dictionaryOf(const std::vector<Entry> &entries) {
    std::vector<const void *> keys;
    std::vector<const void *> values;
    for (const auto &[key, value] : entries) {
        if (!value)
            return {};
        keys.push_back(key);
        values.push_back(value.get());
    }
    return CFRef<CFDictionaryRef>::adopted(CFDictionaryCreate(
        kCFAllocatorDefault, keys.data(), values.data(), static_cast<CFIndex>(keys.size()),
        &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

SecretSearch nothingFor(OSStatus status) {
    switch (status) {
    case errSecItemNotFound:
        return {};
    case errSecNotAvailable:
        return {SecretOutcome::unavailable, {}, QStringLiteral("there is no keychain")};
    case errSecInteractionNotAllowed:
        return {SecretOutcome::unavailable, {}, QStringLiteral("the keychain stays locked")};
    default:
        return {SecretOutcome::absent, {}, QStringLiteral("the keychain refuses")};
    }
}

} // namespace

QCoro::Task<SecretSearch> MacSecrets::find(QString service, QString account) {
    std::vector<Entry> query = baseQuery(service, account);
    query.emplace_back(kSecReturnData, constant(kCFBooleanTrue));
    query.emplace_back(kSecMatchLimit, constant(kSecMatchLimitOne));
    const CFRef<CFDictionaryRef> dictionary = dictionaryOf(query);
    if (!dictionary)
        co_return nothingFor(errSecAllocate);
    CFTypeRef copied = nullptr;
    const OSStatus status = SecItemCopyMatching(dictionary.get(), &copied);
    const auto result = CFRef<CFTypeRef>::adopted(copied);
    if (status != errSecSuccess)
        co_return nothingFor(status);
    std::optional<QByteArray> bytes = bytesFrom(result.get());
    if (!bytes)
        co_return SecretSearch{SecretOutcome::absent, {}, QStringLiteral("the item has no bytes")};
    co_return SecretSearch{SecretOutcome::found, std::move(*bytes), {}};
}

void MacSecrets::store(const QString &service, const QString &account, const QByteArray &secret) {
    remove(service, account);
    std::vector<Entry> item = baseQuery(service, account);
    item.emplace_back(kSecValueData, CFRef<CFTypeRef>::adopted(toCFData(secret).release()));
    item.emplace_back(kSecAttrAccessible, constant(kSecAttrAccessibleAfterFirstUnlock));
    if (const CFRef<CFDictionaryRef> dictionary = dictionaryOf(item))
        SecItemAdd(dictionary.get(), nullptr);
}

void MacSecrets::remove(const QString &service, const QString &account) {
    if (const CFRef<CFDictionaryRef> dictionary = dictionaryOf(baseQuery(service, account)))
        SecItemDelete(dictionary.get());
}

} // namespace quillmender
