#pragma once

#include <Foundation/Foundation.h>

@class NSStatusItem;

static const CGFloat NSVariableStatusItemLength = -1.0;

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar *systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end
