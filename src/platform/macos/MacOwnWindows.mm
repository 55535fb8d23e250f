#include "platform/macos/MacOwnWindows.h"

#include "platform/macos/WindowAttributes.h"

#include <QVariant>
#include <QWindow>

#include <cmath>

namespace quillmender {

namespace {

enum class WindowKind { other, panel, window };

// Kept by the window itself, so that it ends with it.
constexpr char kindProperty[] = "_quillmender_windowKind";

void remember(QWindow &window, WindowKind kind) {
    window.setProperty(kindProperty, static_cast<int>(kind));
}

WindowKind kindOf(const QWindow &window) {
    return static_cast<WindowKind>(window.property(kindProperty).toInt());
}

} // namespace

MacOwnWindows::MacOwnWindows(std::function<NSView *(const QWindow &)> viewOf)
    : viewOf_(std::move(viewOf)) {}

NSView *MacOwnWindows::toolkitView(const QWindow &window) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the toolkit hands the view out as a number
    return reinterpret_cast<NSView *>(window.winId());
}

void MacOwnWindows::setAccessoryPolicy() {
    @autoreleasepool {
        [[NSApplication sharedApplication]
            setActivationPolicy:NSApplicationActivationPolicyAccessory];
    }
}

void MacOwnWindows::applyPanelAttributes(QWindow *window) {
    remember(*window, WindowKind::panel);
    apply(*window);
    watch_.add(*window);
}

void MacOwnWindows::applyWindowAttributes(QWindow *window) {
    remember(*window, WindowKind::window);
    apply(*window);
    watch_.add(*window);
    watch_.addCloseKey(*window);
}

int MacOwnWindows::coveredHeight(QWindow *panel) {
    @autoreleasepool {
        NSWindow *const native = [viewOf_(*panel) window];
        return native == nil ? 0 : static_cast<int>(std::ceil(quillmender::coveredHeight(native)));
    }
}

void MacOwnWindows::apply(const QWindow &window) {
    const WindowKind kind = kindOf(window);
    @autoreleasepool {
        NSWindow *const native = [viewOf_(window) window];
        if (native == nil)
            return;
        if (kind == WindowKind::panel)
            quillmender::applyPanelAttributes(native);
        else if (kind == WindowKind::window)
            quillmender::applyWindowAttributes(native);
    }
}

void MacOwnWindows::activate(QWindow *window) {
    apply(*window);
    watch_.add(*window);
    @autoreleasepool {
        [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
        [[viewOf_(*window) window] makeKeyAndOrderFront:nil];
    }
}

} // namespace quillmender
