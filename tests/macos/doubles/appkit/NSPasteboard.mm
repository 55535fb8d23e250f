#include "doubles/CallLog.h"
#include "doubles/appkit/GeneralPasteboard.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Text.h"

#import <AppKit/AppKit.h>

NSPasteboardType const NSPasteboardTypeString = @"public.utf8-plain-text";

namespace quillmender::doubles {

GeneralPasteboard &GeneralPasteboard::shared() {
    static GeneralPasteboard pasteboard;
    return pasteboard;
}

void GeneralPasteboard::copyFromElsewhere(std::vector<Item> copied) {
    items = std::move(copied);
    ++changeCount;
}

std::optional<std::string> GeneralPasteboard::text() const {
    for (const Item &item : items) {
        for (const auto &[type, data] : item) {
            if (type == "public.utf8-plain-text")
                return data;
        }
    }
    return std::nullopt;
}

namespace {

std::string bytesOf(NSData *data) {
    return std::string(static_cast<const char *>([data bytes]), [data length]);
}

BOOL setOnFirstItem(const std::string &type, const std::string &bytes) {
    GeneralPasteboard &pasteboard = GeneralPasteboard::shared();
    if (pasteboard.refusesWrites)
        return NO;
    if (pasteboard.items.empty())
        pasteboard.items.emplace_back();
    pasteboard.items.front().emplace_back(type, bytes);
    return YES;
}

} // namespace

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSPasteboard

+ (NSPasteboard *)generalPasteboard {
    static NSPasteboard *const pasteboard = permanent<NSPasteboard>();
    CallLog::shared().add("NSPasteboard generalPasteboard");
    return pasteboard;
}

- (NSInteger)changeCount {
    CallLog::shared().add("NSPasteboard changeCount");
    return GeneralPasteboard::shared().changeCount;
}

- (NSArray<NSPasteboardItem *> *)pasteboardItems {
    CallLog::shared().add("NSPasteboard pasteboardItems");
    const GeneralPasteboard &pasteboard = GeneralPasteboard::shared();
    if (pasteboard.hasNoItemList)
        return nil;
    NSMutableArray *items = [NSMutableArray arrayWithCapacity:0];
    for (const GeneralPasteboard::Item &item : pasteboard.items) {
        NSPasteboardItem *made = [[[NSPasteboardItem alloc] init] autorelease];
        stateOf<GeneralPasteboard::Item>(made) = item;
        [items addObject:made];
    }
    return items;
}

- (NSInteger)clearContents {
    CallLog::shared().add("NSPasteboard clearContents");
    GeneralPasteboard::shared().items.clear();
    return ++GeneralPasteboard::shared().changeCount;
}

- (BOOL)writeObjects:(NSArray<id<NSPasteboardWriting>> *)objects {
    CallLog::shared().add("NSPasteboard writeObjects " + std::to_string([objects count]));
    if (GeneralPasteboard::shared().refusesWrites)
        return NO;
    for (NSPasteboardItem *item in objects)
        GeneralPasteboard::shared().items.push_back(stateOf<GeneralPasteboard::Item>(item));
    return YES;
}

- (NSString *)stringForType:(NSPasteboardType)dataType {
    CallLog::shared().add("NSPasteboard stringForType " + utf8(dataType));
    for (const GeneralPasteboard::Item &item : GeneralPasteboard::shared().items) {
        for (const auto &[type, data] : item) {
            if (type == utf8(dataType) && data)
                return nsString(*data);
        }
    }
    return nil;
}

- (BOOL)setString:(NSString *)string forType:(NSPasteboardType)dataType {
    CallLog::shared().add("NSPasteboard setString " + utf8(string) + " " + utf8(dataType));
    return setOnFirstItem(utf8(dataType), utf8(string));
}

- (BOOL)setData:(NSData *)data forType:(NSPasteboardType)dataType {
    CallLog::shared().add("NSPasteboard setData " + utf8(dataType));
    return setOnFirstItem(utf8(dataType), bytesOf(data));
}

@end

@implementation NSPasteboardItem

- (NSArray<NSPasteboardType> *)types {
    NSMutableArray *types = [NSMutableArray arrayWithCapacity:0];
    for (const auto &entry : stateOf<GeneralPasteboard::Item>(self))
        [types addObject:nsString(entry.first)];
    return types;
}

- (NSData *)dataForType:(NSPasteboardType)type {
    CallLog::shared().add("NSPasteboardItem dataForType " + utf8(type));
    for (const auto &[name, bytes] : stateOf<GeneralPasteboard::Item>(self)) {
        if (name == utf8(type) && bytes)
            return [NSData dataWithBytes:bytes->data() length:bytes->size()];
    }
    return nil;
}

- (BOOL)setData:(NSData *)data forType:(NSPasteboardType)type {
    if (utf8(type) == GeneralPasteboard::shared().refusedType)
        return NO;
    stateOf<GeneralPasteboard::Item>(self).emplace_back(utf8(type), bytesOf(data));
    return YES;
}

@end
