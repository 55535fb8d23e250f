#include "platform/macos/StatusBarItem.h"

#include "platform/macos/ObjcText.h"

namespace quillmender {

StatusBarItem::StatusBarItem(StatusItem item) {
    @autoreleasepool {
        statusItem_ = ObjcRef<NSStatusItem>::retained(
            [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength]);
        configureButton(item);
        makeMenu(item.menu);
    }
}

StatusBarItem::~StatusBarItem() {
    @autoreleasepool {
        [[NSStatusBar systemStatusBar] removeStatusItem:statusItem_.get()];
    }
}

void StatusBarItem::configureButton(const StatusItem &item) {
    NSStatusBarButton *const button = [statusItem_.get() button];
    if (button == nil)
        return;
    NSImage *const image =
        [NSImage imageWithSystemSymbolName:toNSString(item.symbol).get()
                  accessibilityDescription:toNSString(item.accessibilityDescription).get()];
    [button setImage:image];
    [button setToolTip:toNSString(item.toolTip).get()];
}

void StatusBarItem::makeMenu(const QList<StatusMenuItem> &items) {
    target_ = ObjcRef<QuillmenderMenuTarget>::adopted(
        [[QuillmenderMenuTarget alloc] initWithItems:items]);
    menu_ = ObjcRef<NSMenu>::adopted([[NSMenu alloc] initWithTitle:@""]);
    for (qsizetype index = 0; index < items.size(); ++index) {
        const StatusMenuItem &item = items[index];
        const auto made = ObjcRef<NSMenuItem>::adopted([[NSMenuItem alloc]
            initWithTitle:toNSString(item.title).get()
                   action:@selector(performItem:)
            keyEquivalent:toNSString(item.keyEquivalent).get()]);
        [made.get() setKeyEquivalentModifierMask:item.modifiers];
        [made.get() setHidden:item.hidden];
        [made.get() setTag:index];
        [made.get() setTarget:target_.get()];
        [menu_.get() addItem:made.get()];
    }
    [statusItem_.get() setMenu:menu_.get()];
}

void StatusBarItem::update(int index, const QString &title, bool hidden) {
    @autoreleasepool {
        if (index < 0 || index >= [menu_.get() numberOfItems])
            return;
        NSMenuItem *const item = [menu_.get() itemAtIndex:index];
        [item setTitle:toNSString(title).get()];
        [item setHidden:hidden];
    }
}

} // namespace quillmender
