#include "platform/macos/MacSecretItems.h"

#include "platform/macos/CFConversions.h"

#include <Security/Security.h>
#include <vector>

namespace quillmender {

namespace {

CFStringRef keyOf(SecretAttribute attribute) {
    switch (attribute) {
    case SecretAttribute::itemClass:
        return kSecClass;
    case SecretAttribute::service:
        return kSecAttrService;
    case SecretAttribute::account:
        return kSecAttrAccount;
    case SecretAttribute::valueData:
        return kSecValueData;
    case SecretAttribute::accessible:
        return kSecAttrAccessible;
    case SecretAttribute::returnData:
        return kSecReturnData;
    case SecretAttribute::matchLimit:
        return kSecMatchLimit;
    }
    Q_UNREACHABLE();
}

// The system's constant where the attribute's values are constants, else null.
CFStringRef constantOf(SecretAttribute attribute, const QString &text) {
    if (attribute == SecretAttribute::itemClass && text == QLatin1String(secret::genericPassword))
        return kSecClassGenericPassword;
    if (attribute == SecretAttribute::accessible &&
        text == QLatin1String(secret::accessibleAfterFirstUnlock))
        return kSecAttrAccessibleAfterFirstUnlock;
    if (attribute == SecretAttribute::matchLimit && text == QLatin1String(secret::matchLimitOne))
        return kSecMatchLimitOne;
    return nullptr;
}

CFRef<CFTypeRef> valueOf(SecretAttribute attribute, const SecretValue &value) {
    if (const auto *flag = std::get_if<bool>(&value))
        return CFRef<CFTypeRef>::retained(*flag ? kCFBooleanTrue : kCFBooleanFalse);
    if (const auto *bytes = std::get_if<QByteArray>(&value))
        return CFRef<CFTypeRef>::adopted(toCFData(*bytes).release());
    const auto &text = std::get<QString>(value);
    if (const CFStringRef constant = constantOf(attribute, text))
        return CFRef<CFTypeRef>::retained(constant);
    return CFRef<CFTypeRef>::adopted(toCFString(text).release());
}

// Null when the system has no memory for it or for one of its values.
CFRef<CFDictionaryRef> dictionaryOf(const SecretAttributes &attributes) {
    std::vector<CFRef<CFTypeRef>> owned;
    std::vector<const void *> keys;
    std::vector<const void *> values;
    for (const auto &[attribute, value] : attributes) {
        owned.push_back(valueOf(attribute, value));
        if (!owned.back())
            return {};
        keys.push_back(keyOf(attribute));
        values.push_back(owned.back().get());
    }
    return CFRef<CFDictionaryRef>::adopted(CFDictionaryCreate(
        kCFAllocatorDefault, keys.data(), values.data(), static_cast<CFIndex>(keys.size()),
        &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

} // namespace

QCoro::Task<SecretMatch> MacSecretItems::copyMatching(SecretAttributes query) {
    const CFRef<CFDictionaryRef> dictionary = dictionaryOf(query);
    if (!dictionary)
        co_return SecretMatch{errSecAllocate, std::nullopt};
    CFTypeRef copied = nullptr;
    const OSStatus status = SecItemCopyMatching(dictionary.get(), &copied);
    const auto result = CFRef<CFTypeRef>::adopted(copied);
    if (status != errSecSuccess)
        co_return SecretMatch{status, std::nullopt};
    co_return SecretMatch{status, bytesFrom(result.get())};
}

qint32 MacSecretItems::add(const SecretAttributes &attributes) {
    const CFRef<CFDictionaryRef> dictionary = dictionaryOf(attributes);
    if (!dictionary)
        return errSecAllocate;
    return SecItemAdd(dictionary.get(), nullptr);
}

qint32 MacSecretItems::remove(const SecretAttributes &query) {
    const CFRef<CFDictionaryRef> dictionary = dictionaryOf(query);
    if (!dictionary)
        return errSecAllocate;
    return SecItemDelete(dictionary.get());
}

} // namespace quillmender
