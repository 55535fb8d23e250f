#pragma once

#include <AppKit/NSEvent.h>
#include <Foundation/Foundation.h>

@interface NSMenuItem : NSObject
- (instancetype)initWithTitle:(NSString *)string
                       action:(SEL)selector
                keyEquivalent:(NSString *)charCode;
@property(copy) NSString *title;
@property(copy) NSString *keyEquivalent;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(getter=isHidden) BOOL hidden;
@property NSInteger tag;
@property(assign) id target;
@property SEL action;
@end
