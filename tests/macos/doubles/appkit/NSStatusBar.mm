#include "doubles/CallLog.h"
#include "doubles/appkit/StatusArea.h"
#include "doubles/appkit/Symbols.h"
#include "doubles/foundation/Held.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Text.h"

#import <AppKit/AppKit.h>
#include <algorithm>

namespace quillmender::doubles {

namespace {

struct ItemState {
    CGFloat length = 0;
    Held<NSStatusBarButton> button;
    Held<NSMenu> menu;
};

NSStatusItem *shown() {
    return static_cast<NSStatusItem *>(static_cast<id>(StatusArea::shared().items.at(0)));
}

} // namespace

StatusArea &StatusArea::shared() {
    static StatusArea area;
    return area;
}

int StatusArea::itemCount() const {
    return static_cast<int>(items.size());
}

double StatusArea::length() const {
    return stateOf<ItemState>(shown()).length;
}

std::string StatusArea::symbol() const {
    return symbolOf([[shown() button] image]).name;
}

std::string StatusArea::accessibilityDescription() const {
    return symbolOf([[shown() button] image]).description;
}

std::string StatusArea::toolTip() const {
    return utf8([[shown() button] toolTip]);
}

std::vector<StatusArea::MenuItem> StatusArea::menu() const {
    std::vector<MenuItem> seen;
    NSMenu *menu = [shown() menu];
    for (NSInteger index = 0; index < [menu numberOfItems]; ++index) {
        NSMenuItem *item = [menu itemAtIndex:index];
        seen.push_back({utf8([item title]), utf8([item keyEquivalent]),
                        [item keyEquivalentModifierMask], [item isHidden] == YES});
    }
    return seen;
}

bool StatusArea::choose(int index) const {
    @autoreleasepool {
        NSMenuItem *item = [[shown() menu] itemAtIndex:index];
        if (item == nil || ![[item target] respondsToSelector:[item action]])
            return false;
        [[item target] performSelector:[item action] withObject:item];
        return true;
    }
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSStatusBar

+ (NSStatusBar *)systemStatusBar {
    static NSStatusBar *const bar = permanent<NSStatusBar>();
    return bar;
}

- (NSStatusItem *)statusItemWithLength:(CGFloat)length {
    CallLog::shared().add("NSStatusBar statusItemWithLength " +
                          std::to_string(static_cast<int>(length)));
    NSStatusItem *item = [[[NSStatusItem alloc] init] autorelease];
    auto &state = stateOf<ItemState>(item);
    state.length = length;
    if (!StatusArea::shared().hasNoButtons) {
        NSStatusBarButton *button = [[NSStatusBarButton alloc] initWithFrame:NSZeroRect];
        state.button = Held(button);
        [button release];
    }
    StatusArea::shared().items.push_back(item);
    return item;
}

- (void)removeStatusItem:(NSStatusItem *)item {
    CallLog::shared().add("NSStatusBar removeStatusItem");
    std::erase(StatusArea::shared().items, static_cast<void *>(item));
}

@end

@implementation NSStatusItem

- (NSStatusBarButton *)button {
    return stateOf<ItemState>(self).button.get();
}

- (NSMenu *)menu {
    return stateOf<ItemState>(self).menu.get();
}

- (void)setMenu:(NSMenu *)menu {
    CallLog::shared().add("NSStatusItem setMenu " + std::to_string([menu numberOfItems]));
    stateOf<ItemState>(self).menu = Held(menu);
}

// An item that nobody keeps goes from the bar.
- (void)dealloc {
    std::erase(StatusArea::shared().items, static_cast<void *>(self));
    [super dealloc];
}

@end

@implementation NSStatusBarButton
@end
