#include "contract/Contract.h"

#include <Security/Security.h>

QUILLMENDER_CONTRACT_FUNCTION(SecItemCopyMatching, OSStatus (*)(CFDictionaryRef, CFTypeRef *));
QUILLMENDER_CONTRACT_FUNCTION(SecItemAdd, OSStatus (*)(CFDictionaryRef, CFTypeRef *));
QUILLMENDER_CONTRACT_FUNCTION(SecItemDelete, OSStatus (*)(CFDictionaryRef));

static_assert(std::is_same_v<decltype(kSecClass), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecClassGenericPassword), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecAttrService), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecAttrAccount), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecAttrAccessible), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecAttrAccessibleAfterFirstUnlock), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecValueData), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecReturnData), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecMatchLimit), const CFStringRef>);
static_assert(std::is_same_v<decltype(kSecMatchLimitOne), const CFStringRef>);

static_assert(errSecAllocate == -108);
static_assert(errSecSuccess == 0);
static_assert(errSecNotAvailable == -25291);
static_assert(errSecItemNotFound == -25300);
static_assert(errSecInteractionNotAllowed == -25308);
