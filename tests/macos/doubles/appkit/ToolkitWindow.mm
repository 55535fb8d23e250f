#include "doubles/appkit/ToolkitWindow.h"

#import <AppKit/AppKit.h>

namespace quillmender::doubles {

namespace {

NSWindow *windowAt(void *address) {
    return static_cast<NSWindow *>(static_cast<id>(address));
}

NSView *viewAt(void *address) {
    return static_cast<NSView *>(static_cast<id>(address));
}

} // namespace

ToolkitWindow::ToolkitWindow(Kind kind, double contentWidth, double contentHeight)
    : kind_(kind),
      view_([[NSView alloc] initWithFrame:NSMakeRect(0, 0, contentWidth, contentHeight)]) {
    makeNativeWindow();
}

ToolkitWindow::~ToolkitWindow() {
    @autoreleasepool {
        loseNativeWindow();
        [viewAt(view_) release];
    }
}

// In a style that is none of the two that the program wants.
void ToolkitWindow::makeNativeWindow() {
    constexpr NSWindowStyleMask toolkitStyle = NSWindowStyleMaskTitled | NSWindowStyleMaskResizable;
    Class made = [NSWindow class];
    if (kind_ == Kind::panel)
        made = [NSPanel class];
    window_ = [[made alloc] initWithContentRect:[viewAt(view_) frame]
                                      styleMask:toolkitStyle
                                        backing:NSBackingStoreBuffered
                                          defer:NO];
    [windowAt(window_) setContentView:viewAt(view_)];
}

void ToolkitWindow::makeNativeWindowAnew() {
    loseNativeWindow();
    makeNativeWindow();
}

void ToolkitWindow::loseNativeWindow() {
    [windowAt(window_) release];
    window_ = nullptr;
}

std::uintptr_t ToolkitWindow::identifier() const {
    return reinterpret_cast<std::uintptr_t>(view_);
}

unsigned long ToolkitWindow::styleMask() const {
    return [windowAt(window_) styleMask];
}

long ToolkitWindow::level() const {
    return [windowAt(window_) level];
}

unsigned long ToolkitWindow::collectionBehavior() const {
    return [windowAt(window_) collectionBehavior];
}

bool ToolkitWindow::isFloatingPanel() const {
    return [static_cast<NSPanel *>(windowAt(window_)) isFloatingPanel];
}

bool ToolkitWindow::hasTransparentTitleBar() const {
    return [windowAt(window_) titlebarAppearsTransparent];
}

long ToolkitWindow::titleVisibility() const {
    return [windowAt(window_) titleVisibility];
}

bool ToolkitWindow::isReleasedWhenClosed() const {
    return [windowAt(window_) isReleasedWhenClosed];
}

bool ToolkitWindow::hidesOnDeactivate() const {
    return [windowAt(window_) hidesOnDeactivate];
}

bool ToolkitWindow::showsButton(unsigned long button) const {
    return ![[windowAt(window_) standardWindowButton:static_cast<NSWindowButton>(button)] isHidden];
}

double ToolkitWindow::contentWidth() const {
    return [viewAt(view_) frame].size.width;
}

double ToolkitWindow::contentHeight() const {
    return [viewAt(view_) frame].size.height;
}

double ToolkitWindow::contentBottom() const {
    NSWindow *const window = windowAt(window_);
    return [window contentRectForFrameRect:[window frame]].origin.y;
}

} // namespace quillmender::doubles
