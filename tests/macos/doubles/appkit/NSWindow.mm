#include "doubles/CallLog.h"
#include "doubles/foundation/Held.h"
#include "doubles/foundation/Objects.h"

#import <AppKit/AppKit.h>
#include <map>

using namespace quillmender::doubles;

namespace {

constexpr CGFloat titleBarHeight = 28;

struct ViewState {
    NSRect frame{};
    NSWindow *window = nil; // not retained
    BOOL isHidden = NO;
    Held<NSString> toolTip;
    Held<NSImage> image;
};

// With the values that a window has when it is made.
struct WindowState {
    Held<NSView> contentView;
    NSRect frame{};
    NSWindowStyleMask styleMask = 0;
    NSWindowLevel level = NSNormalWindowLevel;
    NSWindowCollectionBehavior collectionBehavior = 0;
    BOOL isTitlebarTransparent = NO;
    NSWindowTitleVisibility titleVisibility = NSWindowTitleHidden;
    BOOL isReleasedWhenClosed = YES;
    BOOL hidesOnDeactivate = YES;
    BOOL isFloatingPanel = NO;
    std::map<NSUInteger, Held<NSButton>> buttons;

    CGFloat titleBar() const {
        return styleMask & NSWindowStyleMaskFullSizeContentView ? 0 : titleBarHeight;
    }
};

void layOut(WindowState &state) {
    [state.contentView.get() setFrame:NSMakeRect(0, 0, state.frame.size.width,
                                                 state.frame.size.height - state.titleBar())];
}

} // namespace

@interface NSView ()
- (void)setWindow:(NSWindow *)window;
@end

@implementation NSView

- (instancetype)initWithFrame:(NSRect)frameRect {
    self = [super init];
    stateOf<ViewState>(self).frame = frameRect;
    return self;
}

- (NSRect)frame {
    return stateOf<ViewState>(self).frame;
}

- (void)setFrame:(NSRect)frame {
    stateOf<ViewState>(self).frame = frame;
}

- (NSWindow *)window {
    return stateOf<ViewState>(self).window;
}

- (void)setWindow:(NSWindow *)window {
    stateOf<ViewState>(self).window = window;
}

- (BOOL)isHidden {
    return stateOf<ViewState>(self).isHidden;
}

- (void)setHidden:(BOOL)hidden {
    stateOf<ViewState>(self).isHidden = hidden;
}

- (NSString *)toolTip {
    return stateOf<ViewState>(self).toolTip.get();
}

- (void)setToolTip:(NSString *)toolTip {
    stateOf<ViewState>(self).toolTip = Held(toolTip);
}

@end

@implementation NSButton

- (NSImage *)image {
    return stateOf<ViewState>(self).image.get();
}

- (void)setImage:(NSImage *)image {
    stateOf<ViewState>(self).image = Held(image);
}

@end

@implementation NSWindow

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag {
    self = [super init];
    auto &state = stateOf<WindowState>(self);
    state.styleMask = style;
    for (const auto button : {NSWindowCloseButton, NSWindowMiniaturizeButton, NSWindowZoomButton}) {
        NSButton *made = [[NSButton alloc] initWithFrame:NSZeroRect];
        state.buttons[button] = Held(made);
        [made release];
    }
    [self setFrame:[self frameRectForContentRect:contentRect] display:NO];
    return self;
}

- (void)dealloc {
    [[self contentView] setWindow:nil];
    [super dealloc];
}

- (NSView *)contentView {
    return stateOf<WindowState>(self).contentView.get();
}

- (void)setContentView:(NSView *)contentView {
    [[self contentView] setWindow:nil];
    stateOf<WindowState>(self).contentView = Held(contentView);
    [contentView setWindow:self];
    layOut(stateOf<WindowState>(self));
}

- (NSWindowStyleMask)styleMask {
    return stateOf<WindowState>(self).styleMask;
}

// The frame stays; the content fills what the new style leaves.
- (void)setStyleMask:(NSWindowStyleMask)styleMask {
    stateOf<WindowState>(self).styleMask = styleMask;
    layOut(stateOf<WindowState>(self));
}

- (NSRect)frame {
    return stateOf<WindowState>(self).frame;
}

- (void)setFrame:(NSRect)frameRect display:(BOOL)flag {
    auto &state = stateOf<WindowState>(self);
    state.frame = frameRect;
    layOut(state);
}

- (NSRect)contentRectForFrameRect:(NSRect)frameRect {
    frameRect.size.height -= stateOf<WindowState>(self).titleBar();
    return frameRect;
}

- (NSRect)frameRectForContentRect:(NSRect)contentRect {
    contentRect.size.height += stateOf<WindowState>(self).titleBar();
    return contentRect;
}

// What no title bar covers, a transparent one neither.
- (NSRect)contentLayoutRect {
    const NSSize size = stateOf<WindowState>(self).frame.size;
    return NSMakeRect(0, 0, size.width, size.height - titleBarHeight);
}

// The upper edge stays.
- (void)setContentSize:(NSSize)size {
    NSRect frame = [self frame];
    const CGFloat top = frame.origin.y + frame.size.height;
    frame.size = [self frameRectForContentRect:NSMakeRect(0, 0, size.width, size.height)].size;
    frame.origin.y = top - frame.size.height;
    [self setFrame:frame display:NO];
}

- (NSWindowLevel)level {
    return stateOf<WindowState>(self).level;
}

- (void)setLevel:(NSWindowLevel)level {
    stateOf<WindowState>(self).level = level;
}

- (NSWindowCollectionBehavior)collectionBehavior {
    return stateOf<WindowState>(self).collectionBehavior;
}

- (void)setCollectionBehavior:(NSWindowCollectionBehavior)collectionBehavior {
    stateOf<WindowState>(self).collectionBehavior = collectionBehavior;
}

- (BOOL)titlebarAppearsTransparent {
    return stateOf<WindowState>(self).isTitlebarTransparent;
}

- (void)setTitlebarAppearsTransparent:(BOOL)transparent {
    stateOf<WindowState>(self).isTitlebarTransparent = transparent;
}

- (NSWindowTitleVisibility)titleVisibility {
    return stateOf<WindowState>(self).titleVisibility;
}

- (void)setTitleVisibility:(NSWindowTitleVisibility)visibility {
    stateOf<WindowState>(self).titleVisibility = visibility;
}

- (BOOL)isReleasedWhenClosed {
    return stateOf<WindowState>(self).isReleasedWhenClosed;
}

- (void)setReleasedWhenClosed:(BOOL)released {
    stateOf<WindowState>(self).isReleasedWhenClosed = released;
}

- (BOOL)hidesOnDeactivate {
    return stateOf<WindowState>(self).hidesOnDeactivate;
}

- (void)setHidesOnDeactivate:(BOOL)hides {
    stateOf<WindowState>(self).hidesOnDeactivate = hides;
}

- (NSButton *)standardWindowButton:(NSWindowButton)b {
    return stateOf<WindowState>(self).buttons[b].get();
}

- (void)makeKeyAndOrderFront:(id)sender {
    CallLog::shared().add("NSWindow makeKeyAndOrderFront style " +
                          std::to_string([self styleMask]));
}

@end

@implementation NSPanel

- (BOOL)isFloatingPanel {
    return stateOf<WindowState>(self).isFloatingPanel;
}

- (void)setFloatingPanel:(BOOL)floating {
    stateOf<WindowState>(self).isFloatingPanel = floating;
    [self setLevel:floating ? NSFloatingWindowLevel : NSNormalWindowLevel];
}

@end
