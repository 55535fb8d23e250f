#pragma once

#include <AppKit/NSPasteboard.h>
#include <Foundation/Foundation.h>

@interface NSPasteboardItem : NSObject <NSPasteboardWriting>
@property(readonly, copy) NSArray<NSPasteboardType> *types;
- (NSData *)dataForType:(NSPasteboardType)type;
- (BOOL)setData:(NSData *)data forType:(NSPasteboardType)type;
@end
