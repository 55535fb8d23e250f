#pragma once

#include <AppKit/NSFontDescriptor.h>
#include <AppKit/NSGraphics.h>
#include <Foundation/Foundation.h>

@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
+ (instancetype)imageWithSystemSymbolName:(NSString *)symbolName
                 accessibilityDescription:(NSString *)description;
- (NSImage *)imageWithSymbolConfiguration:(NSImageSymbolConfiguration *)configuration;
@property NSSize size;
- (void)drawInRect:(NSRect)dstSpacePortionRect
          fromRect:(NSRect)srcSpacePortionRect
         operation:(NSCompositingOperation)op
          fraction:(CGFloat)requestedAlpha;
@end
