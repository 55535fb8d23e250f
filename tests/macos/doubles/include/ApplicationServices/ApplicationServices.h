#pragma once

// A double of the framework's umbrella header: only what the program calls, with the signatures,
// sizes and values that the framework documents. Includes nothing that a macOS SDK lacks.

#include <CoreFoundation/CoreFoundation.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

// Quartz events

typedef struct __CGEventSource *CGEventSourceRef;
typedef struct __CGEvent *CGEventRef;
typedef uint16_t CGKeyCode;

typedef enum CGEventSourceStateID : int32_t {
    kCGEventSourceStatePrivate = -1,
    kCGEventSourceStateCombinedSessionState = 0,
    kCGEventSourceStateHIDSystemState = 1
} CGEventSourceStateID;

typedef enum CGEventTapLocation : uint32_t {
    kCGHIDEventTap = 0,
    kCGSessionEventTap,
    kCGAnnotatedSessionEventTap
} CGEventTapLocation;

// An option set is its plain number in C++.
typedef uint64_t CGEventFlags;
enum : CGEventFlags {
    kCGEventFlagMaskShift = 0x00020000,
    kCGEventFlagMaskControl = 0x00040000,
    kCGEventFlagMaskAlternate = 0x00080000,
    kCGEventFlagMaskCommand = 0x00100000
};

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID stateID);
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode virtualKey, bool keyDown);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
void CGEventPost(CGEventTapLocation tap, CGEventRef event);

// Accessibility

typedef const struct __AXUIElement *AXUIElementRef;
typedef const struct __AXValue *AXValueRef;

typedef enum AXError : SInt32 {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorInvalidUIElementObserver = -25203,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorActionUnsupported = -25206,
    kAXErrorNotificationUnsupported = -25207,
    kAXErrorNotImplemented = -25208,
    kAXErrorNotificationAlreadyRegistered = -25209,
    kAXErrorNotificationNotRegistered = -25210,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
    kAXErrorParameterizedAttributeUnsupported = -25213,
    kAXErrorNotEnoughPrecision = -25214
} AXError;

typedef enum AXValueType : UInt32 {
    kAXValueTypeIllegal = 0,
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeCGRect = 3,
    kAXValueTypeCFRange = 4,
    kAXValueTypeAXError = 5
} AXValueType;

extern CFStringRef kAXTrustedCheckOptionPrompt;

Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);

CFTypeID AXUIElementGetTypeID(void);
AXUIElementRef AXUIElementCreateSystemWide(void);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef *value);
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                     CFTypeRef value);

AXError AXUIElementGetPid(AXUIElementRef element, pid_t *pid);
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds);

CFTypeID AXValueGetTypeID(void);
AXValueRef AXValueCreate(AXValueType theType, const void *valuePtr);
AXValueType AXValueGetType(AXValueRef value);
Boolean AXValueGetValue(AXValueRef value, AXValueType theType, void *valuePtr);

#ifdef __cplusplus
}
#endif
