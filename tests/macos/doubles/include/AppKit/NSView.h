#pragma once

#include <Foundation/Foundation.h>

@class NSWindow;

@interface NSView : NSObject
- (instancetype)initWithFrame:(NSRect)frameRect;
@property NSRect frame;
@property(readonly, assign) NSWindow *window;
@property(getter=isHidden) BOOL hidden;
@property(copy) NSString *toolTip;
@end
