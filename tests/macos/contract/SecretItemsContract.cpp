#include "contract/Contract.h"
#include "platform/SecretItems.h"

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
static_assert(quillmender::secret::success == errSecSuccess);
static_assert(quillmender::secret::notAvailable == errSecNotAvailable);
static_assert(quillmender::secret::duplicateItem == errSecDuplicateItem);
static_assert(quillmender::secret::itemNotFound == errSecItemNotFound);
static_assert(quillmender::secret::interactionNotAllowed == errSecInteractionNotAllowed);
