#include "platform/macos/MacPasteboard.h"

#include "platform/macos/ObjcText.h"

namespace quillmender {

namespace {

PasteboardItem readItem(NSPasteboardItem *source) {
    PasteboardItem item;
    for (NSPasteboardType type in [source types]) {
        NSData *const data = [source dataForType:type];
        if (data == nil)
            continue;
        item.setData(toQString(type), QByteArray(static_cast<const char *>([data bytes]),
                                                 static_cast<qsizetype>([data length])));
    }
    return item;
}

QList<PasteboardItem> readItems(NSPasteboard *pasteboard) {
    QList<PasteboardItem> items;
    @autoreleasepool {
        for (NSPasteboardItem *source in [pasteboard pasteboardItems])
            items.append(readItem(source));
    }
    return items;
}

ObjcRef<NSPasteboardItem> makeItem(const PasteboardItem &item) {
    auto made = ObjcRef<NSPasteboardItem>::adopted([[NSPasteboardItem alloc] init]);
    for (const PasteboardRepresentation &representation : item.representations()) {
        NSData *const data =
            [NSData dataWithBytes:representation.data.constData()
                           length:static_cast<NSUInteger>(representation.data.size())];
        // A type that is refused is lost alone; the others are still worth writing.
        [made.get() setData:data forType:toNSString(representation.type).get()];
    }
    return made;
}

std::optional<QString> readString(NSPasteboard *pasteboard) {
    @autoreleasepool {
        NSString *const text = [pasteboard stringForType:NSPasteboardTypeString];
        if (text == nil)
            return std::nullopt;
        return toQString(text);
    }
}

/// The pasteboard server does not tell who has read what.
class MacLentText : public LentText {
  public:
    QCoro::Task<bool> wasRead(std::chrono::milliseconds) override { co_return true; }
};

} // namespace

MacPasteboard::MacPasteboard() {
    @autoreleasepool {
        pasteboard_ = ObjcRef<NSPasteboard>::retained([NSPasteboard generalPasteboard]);
    }
}

QCoro::Task<QList<PasteboardItem>> MacPasteboard::items() {
    co_return readItems(pasteboard_.get());
}

qint64 MacPasteboard::changeCount() {
    return [pasteboard_.get() changeCount];
}

void MacPasteboard::replaceContents(const QList<PasteboardItem> &items) {
    @autoreleasepool {
        [pasteboard_.get() clearContents];
        if (items.isEmpty())
            return;
        NSMutableArray<NSPasteboardItem *> *const objects =
            [NSMutableArray arrayWithCapacity:static_cast<NSUInteger>(items.size())];
        for (const PasteboardItem &item : items)
            [objects addObject:makeItem(item).get()];
        [pasteboard_.get() writeObjects:objects];
    }
}

QCoro::Task<std::optional<QString>> MacPasteboard::string() {
    co_return readString(pasteboard_.get());
}

LentTextRef MacPasteboard::lend(const QString &text, RunningApplicationRef) {
    @autoreleasepool {
        [pasteboard_.get() clearContents];
        [pasteboard_.get() setString:toNSString(text).get() forType:NSPasteboardTypeString];
    }
    return std::make_shared<MacLentText>();
}

// The server keeps the contents when the program ends.
QCoro::Task<> MacPasteboard::handOver() {
    co_return;
}

} // namespace quillmender
