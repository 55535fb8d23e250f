#include "contract/Contract.h"

#include <ApplicationServices/ApplicationServices.h>

QUILLMENDER_CONTRACT_FUNCTION(AXIsProcessTrusted, Boolean (*)());
QUILLMENDER_CONTRACT_FUNCTION(AXIsProcessTrustedWithOptions, Boolean (*)(CFDictionaryRef));
QUILLMENDER_CONTRACT_FUNCTION(AXUIElementGetTypeID, CFTypeID (*)());
QUILLMENDER_CONTRACT_FUNCTION(AXUIElementCreateSystemWide, AXUIElementRef (*)());
QUILLMENDER_CONTRACT_FUNCTION(AXUIElementCopyAttributeValue,
                              AXError (*)(AXUIElementRef, CFStringRef, CFTypeRef *));
QUILLMENDER_CONTRACT_FUNCTION(AXUIElementSetAttributeValue,
                              AXError (*)(AXUIElementRef, CFStringRef, CFTypeRef));
QUILLMENDER_CONTRACT_FUNCTION(AXUIElementGetPid, AXError (*)(AXUIElementRef, pid_t *));
QUILLMENDER_CONTRACT_FUNCTION(AXUIElementSetMessagingTimeout, AXError (*)(AXUIElementRef, float));
QUILLMENDER_CONTRACT_FUNCTION(AXValueGetTypeID, CFTypeID (*)());
QUILLMENDER_CONTRACT_FUNCTION(AXValueCreate, AXValueRef (*)(AXValueType, const void *));
QUILLMENDER_CONTRACT_FUNCTION(AXValueGetType, AXValueType (*)(AXValueRef));
QUILLMENDER_CONTRACT_FUNCTION(AXValueGetValue, Boolean (*)(AXValueRef, AXValueType, void *));

static_assert(std::is_same_v<decltype(kAXTrustedCheckOptionPrompt), CFStringRef>);
static_assert(std::is_same_v<std::underlying_type_t<AXError>, SInt32>);
static_assert(std::is_same_v<std::underlying_type_t<AXValueType>, UInt32>);
static_assert(kAXValueTypeCFRange == 4);

static_assert(kAXErrorSuccess == 0);
static_assert(kAXErrorFailure == -25200);
static_assert(kAXErrorCannotComplete == -25204);
