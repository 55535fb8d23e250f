#pragma once

#include <Foundation/Foundation.h>

@class NSButton;
@class NSView;

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskResizable = 1 << 3,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
    NSWindowStyleMaskFullSizeContentView = 1 << 15,
};

typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorMoveToActiveSpace = 1 << 1,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};

typedef NS_ENUM(NSUInteger, NSBackingStoreType) {
    NSBackingStoreBuffered = 2,
};

typedef NS_ENUM(NSUInteger, NSWindowButton) {
    NSWindowCloseButton = 0,
    NSWindowMiniaturizeButton = 1,
    NSWindowZoomButton = 2,
};

typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) {
    NSWindowTitleVisible = 0,
    NSWindowTitleHidden = 1,
};

using NSWindowLevel = NSInteger;
static const NSWindowLevel NSNormalWindowLevel = 0;
static const NSWindowLevel NSFloatingWindowLevel = 3;

@interface NSWindow : NSObject
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag;
@property(strong) NSView *contentView;
@property NSWindowStyleMask styleMask;
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property BOOL titlebarAppearsTransparent;
@property NSWindowTitleVisibility titleVisibility;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property BOOL hidesOnDeactivate;
@property(readonly) NSRect frame;
@property(readonly) NSRect contentLayoutRect;
- (void)setFrame:(NSRect)frameRect display:(BOOL)flag;
- (NSRect)contentRectForFrameRect:(NSRect)frameRect;
- (NSRect)frameRectForContentRect:(NSRect)contentRect;
- (void)setContentSize:(NSSize)size;
- (NSButton *)standardWindowButton:(NSWindowButton)b;
- (void)makeKeyAndOrderFront:(id)sender;
@end
