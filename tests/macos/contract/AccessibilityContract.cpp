#include "contract/Contract.h"
#include "platform/Accessibility.h"

#include <ApplicationServices/ApplicationServices.h>

namespace {

constexpr bool same(quillmender::AccessibilityError ours, AXError systems) {
    return static_cast<int>(ours) == static_cast<int>(systems);
}

} // namespace

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

static_assert(same(quillmender::AccessibilityError::success, kAXErrorSuccess));
static_assert(same(quillmender::AccessibilityError::failure, kAXErrorFailure));
static_assert(same(quillmender::AccessibilityError::illegalArgument, kAXErrorIllegalArgument));
static_assert(same(quillmender::AccessibilityError::invalidElement, kAXErrorInvalidUIElement));
static_assert(same(quillmender::AccessibilityError::cannotComplete, kAXErrorCannotComplete));
static_assert(same(quillmender::AccessibilityError::attributeUnsupported,
                   kAXErrorAttributeUnsupported));
static_assert(same(quillmender::AccessibilityError::apiDisabled, kAXErrorAPIDisabled));
static_assert(same(quillmender::AccessibilityError::noValue, kAXErrorNoValue));
