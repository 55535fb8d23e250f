#include "contract/Contract.h"

#include <Security/Security.h>

QUILLMENDER_CONTRACT_FUNCTION(SecItemCopyMatching, OSStatus (*)(CFDictionaryRef, CFTypeRef *));
QUILLMENDER_CONTRACT_FUNCTION(SecItemAdd, OSStatus (*)(CFDictionaryRef, CFTypeRef *));
QUILLMENDER_CONTRACT_FUNCTION(SecItemDelete, OSStatus (*)(CFDictionaryRef));

static_assert(std::is_same_v<std::remove_const_t<decltype(kSecClass)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecClassGenericPassword)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecAttrService)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecAttrAccount)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecAttrAccessible)>, CFStringRef>);
static_assert(
    std::is_same_v<std::remove_const_t<decltype(kSecAttrAccessibleAfterFirstUnlock)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecValueData)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecReturnData)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecMatchLimit)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kSecMatchLimitOne)>, CFStringRef>);

static_assert(errSecAllocate == -108);
static_assert(errSecSuccess == 0);
static_assert(errSecNotAvailable == -25291);
static_assert(errSecItemNotFound == -25300);
static_assert(errSecInteractionNotAllowed == -25308);
