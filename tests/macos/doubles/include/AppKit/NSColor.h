#pragma once

#include <Foundation/Foundation.h>

@class NSColorSpace;

FOUNDATION_EXPORT NSNotificationName const NSSystemColorsDidChangeNotification;

@interface NSColor : NSObject
@property(class, readonly, strong) NSColor *controlAccentColor;
- (NSColor *)colorUsingColorSpace:(NSColorSpace *)space;
@property(readonly) CGFloat redComponent;
@property(readonly) CGFloat greenComponent;
@property(readonly) CGFloat blueComponent;
@end
