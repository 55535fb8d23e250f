#include "platform/macos/WindowAttributes.h"

#include <algorithm>

namespace quillmender {

namespace {

constexpr NSWindowStyleMask panelStyle =
    NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskFullSizeContentView;
constexpr NSWindowStyleMask windowStyle =
    NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable;
constexpr NSWindowCollectionBehavior panelBehavior =
    NSWindowCollectionBehaviorMoveToActiveSpace | NSWindowCollectionBehaviorFullScreenAuxiliary;

// Another style keeps the frame, and so makes the content larger or smaller.
void setStyleMask(NSWindow *window, NSWindowStyleMask style) {
    if ([window styleMask] == style)
        return;
    const NSRect content = [window contentRectForFrameRect:[window frame]];
    [window setStyleMask:style];
    [window setFrame:[window frameRectForContentRect:content] display:YES];
}

} // namespace

CGFloat coveredHeight(NSWindow *window) {
    const NSRect content = [[window contentView] frame];
    return std::max<CGFloat>(0, NSHeight(content) - NSMaxY([window contentLayoutRect]));
}

void applyPanelAttributes(NSWindow *window) {
    setStyleMask(window, panelStyle);
    if ([window isKindOfClass:[NSPanel class]])
        [static_cast<NSPanel *>(window) setFloatingPanel:YES];
    [window setLevel:NSFloatingWindowLevel];
    [window setCollectionBehavior:panelBehavior];
    [window setTitlebarAppearsTransparent:YES];
    [window setReleasedWhenClosed:NO];
    [window setHidesOnDeactivate:NO];
    [[window standardWindowButton:NSWindowMiniaturizeButton] setHidden:YES];
    [[window standardWindowButton:NSWindowZoomButton] setHidden:YES];
}

void applyWindowAttributes(NSWindow *window) {
    setStyleMask(window, windowStyle);
    [window setTitleVisibility:NSWindowTitleVisible];
    [window setReleasedWhenClosed:NO];
    [window setHidesOnDeactivate:NO];
}

} // namespace quillmender
