#pragma once

#include <Foundation/Foundation.h>

@class NSMenuItem;

@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString *)title;
- (void)addItem:(NSMenuItem *)newItem;
- (NSMenuItem *)itemAtIndex:(NSInteger)index;
@property(readonly) NSInteger numberOfItems;
@end
