#include "doubles/foundation/Held.h"
#include "doubles/foundation/Objects.h"

#import <AppKit/AppKit.h>
#include <vector>

using namespace quillmender::doubles;

namespace {

using Items = std::vector<Held<NSMenuItem>>;

struct ItemState {
    Held<NSString> title;
    Held<NSString> keyEquivalent;
    NSEventModifierFlags modifiers = NSEventModifierFlagCommand;
    BOOL isHidden = NO;
    NSInteger tag = 0;
    id target = nil; // not retained
    SEL action = nullptr;
};

} // namespace

@implementation NSMenu

- (instancetype)initWithTitle:(NSString *)title {
    return [super init];
}

- (void)addItem:(NSMenuItem *)newItem {
    stateOf<Items>(self).emplace_back(newItem);
}

- (NSMenuItem *)itemAtIndex:(NSInteger)index {
    return stateOf<Items>(self).at(NSUInteger(index)).get();
}

- (NSInteger)numberOfItems {
    return NSInteger(stateOf<Items>(self).size());
}

@end

@implementation NSMenuItem

- (instancetype)initWithTitle:(NSString *)string
                       action:(SEL)selector
                keyEquivalent:(NSString *)charCode {
    self = [super init];
    auto &state = stateOf<ItemState>(self);
    state.title = Held(string);
    state.keyEquivalent = Held(charCode);
    state.action = selector;
    return self;
}

- (NSString *)title {
    return stateOf<ItemState>(self).title.get();
}

- (void)setTitle:(NSString *)title {
    stateOf<ItemState>(self).title = Held(title);
}

- (NSString *)keyEquivalent {
    return stateOf<ItemState>(self).keyEquivalent.get();
}

- (void)setKeyEquivalent:(NSString *)keyEquivalent {
    stateOf<ItemState>(self).keyEquivalent = Held(keyEquivalent);
}

- (NSEventModifierFlags)keyEquivalentModifierMask {
    return stateOf<ItemState>(self).modifiers;
}

- (void)setKeyEquivalentModifierMask:(NSEventModifierFlags)mask {
    stateOf<ItemState>(self).modifiers = mask;
}

- (BOOL)isHidden {
    return stateOf<ItemState>(self).isHidden;
}

- (void)setHidden:(BOOL)hidden {
    stateOf<ItemState>(self).isHidden = hidden;
}

- (NSInteger)tag {
    return stateOf<ItemState>(self).tag;
}

- (void)setTag:(NSInteger)tag {
    stateOf<ItemState>(self).tag = tag;
}

- (id)target {
    return stateOf<ItemState>(self).target;
}

- (void)setTarget:(id)target {
    stateOf<ItemState>(self).target = target;
}

- (SEL)action {
    return stateOf<ItemState>(self).action;
}

- (void)setAction:(SEL)action {
    stateOf<ItemState>(self).action = action;
}

@end
