#include "contract/Contract.h"

#include <CoreFoundation/CoreFoundation.h>

QUILLMENDER_CONTRACT_INTEGER(Boolean, 1, false);
QUILLMENDER_CONTRACT_INTEGER(UInt8, 1, false);
QUILLMENDER_CONTRACT_INTEGER(UniChar, 2, false);
QUILLMENDER_CONTRACT_INTEGER(UInt32, 4, false);
QUILLMENDER_CONTRACT_INTEGER(OSStatus, 4, true);
QUILLMENDER_CONTRACT_INTEGER(CFIndex, 8, true);
QUILLMENDER_CONTRACT_INTEGER(CFTypeID, 8, false);
static_assert(sizeof(CFRange) == 16);
static_assert(std::is_same_v<decltype(CFRange::location), CFIndex>);
static_assert(std::is_same_v<decltype(CFRange::length), CFIndex>);
static_assert(std::is_same_v<CFTypeRef, const void *>);
static_assert(std::is_same_v<CFPropertyListRef, CFTypeRef>);
static_assert(std::is_convertible_v<CFStringRef, CFTypeRef>);
static_assert(!std::is_convertible_v<CFStringRef, CFDataRef>);
static_assert(noErr == 0);

QUILLMENDER_CONTRACT_FUNCTION(CFGetTypeID, CFTypeID (*)(CFTypeRef));
QUILLMENDER_CONTRACT_FUNCTION(CFRetain, CFTypeRef (*)(CFTypeRef));
QUILLMENDER_CONTRACT_FUNCTION(CFRelease, void (*)(CFTypeRef));
QUILLMENDER_CONTRACT_FUNCTION(CFStringGetTypeID, CFTypeID (*)());
QUILLMENDER_CONTRACT_FUNCTION(CFStringCreateWithCharacters,
                              CFStringRef (*)(CFAllocatorRef, const UniChar *, CFIndex));
QUILLMENDER_CONTRACT_FUNCTION(CFStringGetLength, CFIndex (*)(CFStringRef));
QUILLMENDER_CONTRACT_FUNCTION(CFStringGetCharacters, void (*)(CFStringRef, CFRange, UniChar *));
QUILLMENDER_CONTRACT_FUNCTION(CFDataGetTypeID, CFTypeID (*)());
QUILLMENDER_CONTRACT_FUNCTION(CFDataCreate, CFDataRef (*)(CFAllocatorRef, const UInt8 *, CFIndex));
QUILLMENDER_CONTRACT_FUNCTION(CFDataGetLength, CFIndex (*)(CFDataRef));
QUILLMENDER_CONTRACT_FUNCTION(CFDataGetBytePtr, const UInt8 *(*)(CFDataRef));
QUILLMENDER_CONTRACT_FUNCTION(CFDictionaryCreate,
                              CFDictionaryRef (*)(CFAllocatorRef, const void **, const void **,
                                                  CFIndex, const CFDictionaryKeyCallBacks *,
                                                  const CFDictionaryValueCallBacks *));
QUILLMENDER_CONTRACT_FUNCTION(CFPreferencesCopyAppValue,
                              CFPropertyListRef (*)(CFStringRef, CFStringRef));
QUILLMENDER_CONTRACT_FUNCTION(CFPreferencesSetAppValue,
                              void (*)(CFStringRef, CFPropertyListRef, CFStringRef));
QUILLMENDER_CONTRACT_FUNCTION(CFPreferencesAppSynchronize, Boolean (*)(CFStringRef));

static_assert(std::is_same_v<std::remove_const_t<decltype(kCFAllocatorDefault)>, CFAllocatorRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kCFBooleanTrue)>, CFBooleanRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kCFBooleanFalse)>, CFBooleanRef>);
static_assert(
    std::is_same_v<std::remove_const_t<decltype(kCFPreferencesCurrentApplication)>, CFStringRef>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kCFTypeDictionaryKeyCallBacks)>,
                             CFDictionaryKeyCallBacks>);
static_assert(std::is_same_v<std::remove_const_t<decltype(kCFTypeDictionaryValueCallBacks)>,
                             CFDictionaryValueCallBacks>);
