#include "platform/macos/MacStatusItem.h"

#include "platform/macos/ObjcText.h"

namespace quillmender {

namespace {

// Letters are lower case: an upper case one would stand for Shift besides.
QString keyEquivalent(const StatusMenuItem &item) {
    return item.shortcut ? QString(QChar(static_cast<char16_t>(item.shortcut->key())).toLower())
                         : QString();
}

NSEventModifierFlags modifierMask(const StatusMenuItem &item) {
    if (!item.shortcut)
        return 0;
    const Qt::KeyboardModifiers modifiers = item.shortcut->keyboardModifiers();
    NSEventModifierFlags mask = 0;
    if (modifiers.testFlag(Qt::ControlModifier))
        mask |= NSEventModifierFlagControl;
    if (modifiers.testFlag(Qt::AltModifier))
        mask |= NSEventModifierFlagOption;
    if (modifiers.testFlag(Qt::MetaModifier))
        mask |= NSEventModifierFlagCommand;
    return mask;
}

} // namespace

MacStatusItem::~MacStatusItem() {
    remove();
}

void MacStatusItem::remove() {
    if (!statusItem_)
        return;
    @autoreleasepool {
        [[NSStatusBar systemStatusBar] removeStatusItem:statusItem_.get()];
    }
}

void MacStatusItem::show(const StatusItemContents &contents) {
    remove();
    @autoreleasepool {
        statusItem_ = ObjcRef<NSStatusItem>::retained(
            [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength]);
        configureButton(contents);
        makeMenu(contents.menu);
    }
}

void MacStatusItem::configureButton(const StatusItemContents &contents) {
    NSStatusBarButton *const button = [statusItem_.get() button];
    if (button == nil)
        return;
    NSImage *const image =
        [NSImage imageWithSystemSymbolName:toNSString(contents.symbol).get()
                  accessibilityDescription:toNSString(contents.accessibilityDescription).get()];
    [button setImage:image];
    [button setToolTip:toNSString(contents.toolTip).get()];
}

void MacStatusItem::makeMenu(const QList<StatusMenuItem> &items) {
    target_ = ObjcRef<QuillmenderMenuTarget>::adopted(
        [[QuillmenderMenuTarget alloc] initWithItems:items]);
    menu_ = ObjcRef<NSMenu>::adopted([[NSMenu alloc] initWithTitle:@""]);
    for (qsizetype index = 0; index < items.size(); ++index) {
        const StatusMenuItem &item = items[index];
        const auto made = ObjcRef<NSMenuItem>::adopted([[NSMenuItem alloc]
            initWithTitle:toNSString(item.title).get()
                   action:@selector(performItem:)
            keyEquivalent:toNSString(keyEquivalent(item)).get()]);
        [made.get() setKeyEquivalentModifierMask:modifierMask(item)];
        [made.get() setHidden:item.hidden];
        [made.get() setTag:index];
        [made.get() setTarget:target_.get()];
        [menu_.get() addItem:made.get()];
    }
    [statusItem_.get() setMenu:menu_.get()];
}

void MacStatusItem::updateMenuItem(int index, const QString &title, bool hidden) {
    @autoreleasepool {
        if (index < 0 || index >= [menu_.get() numberOfItems])
            return;
        NSMenuItem *const item = [menu_.get() itemAtIndex:index];
        [item setTitle:toNSString(title).get()];
        [item setHidden:hidden];
    }
}

} // namespace quillmender
