#include "contract/Contract.h"

#include <Carbon/Carbon.h>

QUILLMENDER_CONTRACT_FUNCTION(GetApplicationEventTarget, EventTargetRef (*)());
QUILLMENDER_CONTRACT_FUNCTION(InstallEventHandler,
                              OSStatus (*)(EventTargetRef, EventHandlerUPP, ItemCount,
                                           const EventTypeSpec *, void *, EventHandlerRef *));
QUILLMENDER_CONTRACT_FUNCTION(RemoveEventHandler, OSStatus (*)(EventHandlerRef));
QUILLMENDER_CONTRACT_FUNCTION(RegisterEventHotKey,
                              OSStatus (*)(UInt32, UInt32, EventHotKeyID, EventTargetRef,
                                           OptionBits, EventHotKeyRef *));
QUILLMENDER_CONTRACT_FUNCTION(UnregisterEventHotKey, OSStatus (*)(EventHotKeyRef));

static_assert(std::is_same_v<EventHandlerUPP, OSStatus (*)(EventHandlerCallRef, EventRef, void *)>);
static_assert(std::is_same_v<decltype(EventTypeSpec::eventClass), OSType>);
static_assert(std::is_same_v<decltype(EventTypeSpec::eventKind), UInt32>);
static_assert(std::is_same_v<decltype(EventHotKeyID::signature), OSType>);
static_assert(std::is_same_v<decltype(EventHotKeyID::id), UInt32>);
static_assert(sizeof(EventTypeSpec) == 8 && sizeof(EventHotKeyID) == 8);

static_assert(kEventClassKeyboard == 0x6B657962);
static_assert(kEventHotKeyPressed == 5);
static_assert(controlKey == 0x1000 && optionKey == 0x0800);
static_assert(shiftKey == 0x0200 && cmdKey == 0x0100);
static_assert(noErr == 0);
static_assert(eventNotHandledErr == -9874);
static_assert(kVK_Space == 49);
