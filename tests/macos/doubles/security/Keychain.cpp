#include "doubles/security/Keychain.h"

#include "doubles/CallLog.h"
#include "doubles/cf/Data.h"
#include "doubles/cf/Dictionary.h"
#include "doubles/cf/String.h"

#include <algorithm>

namespace quillmender::doubles {

namespace {

Keychain *currentKeychain = nullptr;

// Empty when the dictionary has no such entry.
std::string textOf(CFDictionaryRef dictionary, CFStringRef key) {
    const auto *value = CFDictionaryGetValue(dictionary, key);
    const auto *data = value ? dynamic_cast<const Data *>(objectOf(value)) : nullptr;
    if (data)
        return data->bytes();
    return value ? describe(value) : std::string();
}

Keychain::Item itemOf(CFDictionaryRef dictionary) {
    return {textOf(dictionary, kSecClass), textOf(dictionary, kSecAttrService),
            textOf(dictionary, kSecAttrAccount), textOf(dictionary, kSecValueData),
            textOf(dictionary, kSecAttrAccessible)};
}

bool matches(const Keychain::Item &item, const Keychain::Item &query) {
    return item.itemClass == query.itemClass &&
           (query.service.empty() || item.service == query.service) &&
           (query.account.empty() || item.account == query.account);
}

} // namespace

Keychain::Keychain() {
    currentKeychain = this;
}

Keychain::~Keychain() {
    currentKeychain = nullptr;
}

Keychain &Keychain::current() {
    return *currentKeychain;
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

const CFStringRef kSecClass = makeConstant(u"class");
const CFStringRef kSecClassGenericPassword = makeConstant(u"genp");
const CFStringRef kSecClassInternetPassword = makeConstant(u"inet");
const CFStringRef kSecAttrService = makeConstant(u"svce");
const CFStringRef kSecAttrAccount = makeConstant(u"acct");
const CFStringRef kSecAttrLabel = makeConstant(u"labl");
const CFStringRef kSecAttrAccessible = makeConstant(u"pdmn");
const CFStringRef kSecAttrAccessibleWhenUnlocked = makeConstant(u"ak");
const CFStringRef kSecAttrAccessibleAfterFirstUnlock = makeConstant(u"ck");
const CFStringRef kSecValueData = makeConstant(u"v_Data");
const CFStringRef kSecReturnData = makeConstant(u"r_Data");
const CFStringRef kSecReturnAttributes = makeConstant(u"r_Attributes");
const CFStringRef kSecMatchLimit = makeConstant(u"m_Limit");
const CFStringRef kSecMatchLimitOne = makeConstant(u"m_LimitOne");
const CFStringRef kSecMatchLimitAll = makeConstant(u"m_LimitAll");

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef *result) {
    CallLog::shared().add("SecItemCopyMatching " + describe(query));
    const Keychain &keychain = Keychain::current();
    if (keychain.answersInSpiteOfStatus)
        *result = CFRetain(keychain.answer);
    if (keychain.copyStatus != errSecSuccess)
        return keychain.copyStatus;
    const Keychain::Item wanted = itemOf(query);
    if (wanted.itemClass.empty())
        return errSecParam;
    const auto found = std::ranges::find_if(
        keychain.items, [&](const auto &item) { return matches(item, wanted); });
    if (found == keychain.items.end())
        return errSecItemNotFound;
    if (keychain.answersNull)
        return errSecSuccess;
    if (keychain.answer)
        *result = CFRetain(keychain.answer);
    else if (CFDictionaryGetValue(query, kSecReturnData) == kCFBooleanTrue)
        *result = makeData(found->data);
    return errSecSuccess;
}

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef *result) {
    CallLog::shared().add("SecItemAdd " + describe(attributes) + (result ? " with a result" : ""));
    Keychain &keychain = Keychain::current();
    if (keychain.addStatus != errSecSuccess)
        return keychain.addStatus;
    const Keychain::Item added = itemOf(attributes);
    if (added.itemClass.empty())
        return errSecParam;
    if (std::ranges::any_of(keychain.items, [&](const auto &item) { return matches(item, added); }))
        return errSecDuplicateItem;
    keychain.items.push_back(added);
    return errSecSuccess;
}

OSStatus SecItemDelete(CFDictionaryRef query) {
    CallLog::shared().add("SecItemDelete " + describe(query));
    Keychain &keychain = Keychain::current();
    if (keychain.deleteStatus != errSecSuccess)
        return keychain.deleteStatus;
    const Keychain::Item wanted = itemOf(query);
    if (wanted.itemClass.empty())
        return errSecParam;
    const auto removed =
        std::erase_if(keychain.items, [&](const auto &item) { return matches(item, wanted); });
    return removed == 0 ? errSecItemNotFound : errSecSuccess;
}
