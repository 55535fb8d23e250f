#pragma once

// A double of the framework's umbrella header: only what the program calls, with the signatures,
// sizes and values that the framework documents. Includes nothing that a macOS SDK lacks.

#include <ApplicationServices/ApplicationServices.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueEventRef *EventRef;
typedef struct OpaqueEventHandlerRef *EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef *EventHandlerCallRef;
typedef struct OpaqueEventTargetRef *EventTargetRef;
typedef struct OpaqueEventHotKeyRef *EventHotKeyRef;

typedef struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
} EventTypeSpec;

typedef struct EventHotKeyID {
    OSType signature;
    UInt32 id;
} EventHotKeyID;

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef inHandlerCallRef, EventRef inEvent,
                                        void *inUserData);
typedef EventHandlerProcPtr EventHandlerUPP;

enum { kEventClassKeyboard = 0x6B657962 };
enum { kEventHotKeyPressed = 5, kEventHotKeyReleased = 6 };
enum { cmdKey = 0x0100, shiftKey = 0x0200, optionKey = 0x0800, controlKey = 0x1000 };
enum { kVK_ANSI_C = 0x08, kVK_ANSI_V = 0x09, kVK_Space = 0x31 };
enum {
    eventAlreadyPostedErr = -9860,
    eventNotHandledErr = -9874,
    eventHotKeyExistsErr = -9878,
    eventHotKeyInvalidErr = -9879
};

EventTargetRef GetApplicationEventTarget(void);
OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                             ItemCount inNumTypes, const EventTypeSpec *inList, void *inUserData,
                             EventHandlerRef *outRef);
OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef);
OSStatus RegisterEventHotKey(UInt32 inHotKeyCode, UInt32 inHotKeyModifiers,
                             EventHotKeyID inHotKeyID, EventTargetRef inTarget,
                             OptionBits inOptions, EventHotKeyRef *outRef);
OSStatus UnregisterEventHotKey(EventHotKeyRef inHotKey);

#ifdef __cplusplus
}
#endif
