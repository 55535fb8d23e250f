#include "contract/Contract.h"

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>

QUILLMENDER_CONTRACT_FUNCTION(CGEventSourceCreate, CGEventSourceRef (*)(CGEventSourceStateID));
QUILLMENDER_CONTRACT_FUNCTION(CGEventCreateKeyboardEvent,
                              CGEventRef (*)(CGEventSourceRef, CGKeyCode, bool));
QUILLMENDER_CONTRACT_FUNCTION(CGEventSetFlags, void (*)(CGEventRef, CGEventFlags));
QUILLMENDER_CONTRACT_FUNCTION(CGEventPost, void (*)(CGEventTapLocation, CGEventRef));

QUILLMENDER_CONTRACT_INTEGER(CGKeyCode, 2, false);
static_assert(sizeof(CGEventFlags) == 8);
static_assert(std::is_same_v<std::underlying_type_t<CGEventSourceStateID>, int32_t>);
static_assert(std::is_same_v<std::underlying_type_t<CGEventTapLocation>, uint32_t>);

static_assert(kCGEventSourceStateCombinedSessionState == 0);
static_assert(kCGEventFlagMaskCommand == 0x100000);
static_assert(kCGHIDEventTap == 0);
static_assert(kVK_ANSI_C == 8);
static_assert(kVK_ANSI_V == 9);
