#pragma once

#include <Foundation/Foundation.h>

@class NSPasteboardItem;

using NSPasteboardType = NSString *;

FOUNDATION_EXPORT NSPasteboardType const NSPasteboardTypeString; // "public.utf8-plain-text"

@protocol NSPasteboardWriting
@end

@interface NSPasteboard : NSObject
@property(class, readonly, strong) NSPasteboard *generalPasteboard;
@property(readonly) NSInteger changeCount;
@property(readonly, copy) NSArray<NSPasteboardItem *> *pasteboardItems;
- (NSInteger)clearContents;
- (BOOL)writeObjects:(NSArray<id<NSPasteboardWriting>> *)objects;
- (NSString *)stringForType:(NSPasteboardType)dataType;
- (BOOL)setString:(NSString *)string forType:(NSPasteboardType)dataType;
- (BOOL)setData:(NSData *)data forType:(NSPasteboardType)dataType;
@end
