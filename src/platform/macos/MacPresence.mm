#include "platform/macos/MacPresence.h"

#include "platform/macos/StatusBarItem.h"
#include "platform/macos/SymbolImage.h"
#include "platform/macos/SystemAppearance.h"
#include "platform/macos/WindowAttributes.h"

#import <AppKit/AppKit.h>

namespace quillmender {

namespace {

NSWindow *windowOf(quintptr windowId) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the toolkit hands the view out as a number
    return [reinterpret_cast<NSView *>(windowId) window];
}

} // namespace

MacPresence::MacPresence() {
    @autoreleasepool {
        observer_ = ObjcRef<QuillmenderAppearanceObserver>::adopted(
            [[QuillmenderAppearanceObserver alloc] initWithListener:[this] {
                if (listener_)
                    listener_();
            }]);
    }
}

MacPresence::~MacPresence() {
    @autoreleasepool {
        [observer_.get() stop];
    }
}

void MacPresence::setAccessoryPolicy() {
    @autoreleasepool {
        [[NSApplication sharedApplication]
            setActivationPolicy:NSApplicationActivationPolicyAccessory];
    }
}

void MacPresence::showStatusItem(const StatusItem &item) {
    statusItem_.reset();
    statusItem_ = std::make_unique<StatusBarItem>(item);
}

void MacPresence::updateStatusMenuItem(int index, const QString &title, bool hidden) {
    if (statusItem_)
        statusItem_->update(index, title, hidden);
}

void MacPresence::applyPanelAttributes(quintptr windowId) {
    windows_[windowId] = WindowKind::panel;
    apply(windowId);
}

void MacPresence::applyWindowAttributes(quintptr windowId) {
    windows_[windowId] = WindowKind::window;
    apply(windowId);
}

void MacPresence::apply(quintptr windowId) {
    const auto kind = windows_.constFind(windowId);
    if (kind == windows_.constEnd())
        return;
    @autoreleasepool {
        NSWindow *const window = windowOf(windowId);
        if (window == nil)
            return;
        if (*kind == WindowKind::panel)
            quillmender::applyPanelAttributes(window);
        else
            quillmender::applyWindowAttributes(window);
    }
}

void MacPresence::activateWindow(quintptr windowId) {
    apply(windowId);
    @autoreleasepool {
        [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
        [windowOf(windowId) makeKeyAndOrderFront:nil];
    }
}

QByteArray MacPresence::symbolImage(const QString &name, int pixelSize, quint32 color) {
    return systemSymbolImage(name, pixelSize, color);
}

Appearance MacPresence::appearance() {
    return systemAppearance();
}

void MacPresence::onAppearanceChange(std::function<void()> listener) {
    listener_ = std::move(listener);
}

} // namespace quillmender
