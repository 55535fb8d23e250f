#include "contract/Contract.h"

#import <AppKit/AppKit.h>

QUILLMENDER_CONTRACT_INTEGER(NSInteger, 8, true);
QUILLMENDER_CONTRACT_INTEGER(NSUInteger, 8, false);
QUILLMENDER_CONTRACT_INTEGER(unichar, 2, false);
QUILLMENDER_CONTRACT_INTEGER(NSWindowLevel, 8, true);
static_assert(std::is_same_v<CGFloat, double>);
static_assert(sizeof(NSSize) == 16 && sizeof(NSRect) == 32 && sizeof(NSRange) == 16);

static_assert(NSApplicationActivationPolicyRegular == 0);
static_assert(NSApplicationActivationPolicyAccessory == 1);

static_assert(NSWindowStyleMaskTitled == 1 && NSWindowStyleMaskClosable == 2);
static_assert(NSWindowStyleMaskMiniaturizable == 4 && NSWindowStyleMaskResizable == 8);
static_assert(NSWindowStyleMaskFullSizeContentView == 32768);
static_assert(NSWindowCollectionBehaviorCanJoinAllSpaces == 1);
static_assert(NSWindowCollectionBehaviorMoveToActiveSpace == 2);
static_assert(NSWindowCollectionBehaviorFullScreenAuxiliary == 256);
static_assert(NSWindowCloseButton == 0 && NSWindowMiniaturizeButton == 1);
static_assert(NSWindowZoomButton == 2);
static_assert(NSWindowTitleVisible == 0);
static_assert(NSBackingStoreBuffered == 2);

static_assert(NSEventModifierFlagControl == 0x40000);
static_assert(NSEventModifierFlagOption == 0x80000);
static_assert(NSEventModifierFlagCommand == 0x100000);

static_assert(NSCompositingOperationSourceOver == 2);

// These are constants of the library on a Mac: only their types can be asserted.
static_assert(std::is_convertible_v<decltype(NSFloatingWindowLevel), NSWindowLevel>);
static_assert(std::is_convertible_v<decltype(NSVariableStatusItemLength), CGFloat>);
static_assert(std::is_convertible_v<decltype(NSPasteboardTypeString), NSString *>);

// The properties and methods that are used, by the types of what they answer.
static_assert(std::is_same_v<decltype([NSPasteboard generalPasteboard].changeCount), NSInteger>);
static_assert(
    std::is_same_v<decltype([NSRunningApplication currentApplication].processIdentifier), pid_t>);
static_assert(
    std::is_same_v<decltype([[NSPasteboard generalPasteboard] clearContents]), NSInteger>);
static_assert(std::is_same_v<decltype([[NSApplication sharedApplication] isActive]), BOOL>);
static_assert(std::is_same_v<decltype([[NSApplication sharedApplication] hide:nil]), void>);
static_assert(std::is_same_v<decltype([NSWindow alloc].frame), NSRect>);
static_assert(std::is_same_v<decltype([NSWindow alloc].contentLayoutRect), NSRect>);
static_assert(
    std::is_same_v<decltype([[NSWindow alloc] contentRectForFrameRect:NSZeroRect]), NSRect>);
static_assert(
    std::is_same_v<decltype([[NSWindow alloc] frameRectForContentRect:NSZeroRect]), NSRect>);
static_assert(std::is_same_v<decltype([[NSWindow alloc] setFrame:NSZeroRect display:YES]), void>);
