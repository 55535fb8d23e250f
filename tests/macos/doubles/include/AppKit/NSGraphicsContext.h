#pragma once

#include <Foundation/Foundation.h>

@class NSBitmapImageRep;

@interface NSGraphicsContext : NSObject
+ (NSGraphicsContext *)graphicsContextWithBitmapImageRep:(NSBitmapImageRep *)bitmapRep;
@property(class, strong) NSGraphicsContext *currentContext;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end
