#include "platform/macos/SymbolImage.h"

#include "platform/macos/ObjcText.h"

#import <AppKit/AppKit.h>
#include <algorithm>
#include <cstring>

namespace quillmender {

namespace {

constexpr int bytesPerPixel = 4;
constexpr int alphaByte = 3;

NSImage *symbolFitting(const QString &name, int pixelSize) {
    NSImage *const symbol = [NSImage imageWithSystemSymbolName:toNSString(name).get()
                                      accessibilityDescription:nil];
    NSImageSymbolConfiguration *const configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:pixelSize
                                                        weight:NSFontWeightRegular];
    return [symbol imageWithSymbolConfiguration:configuration];
}

NSRect centredIn(NSSize size, int pixelSize) {
    const CGFloat scale = pixelSize / std::max(size.width, size.height);
    const CGFloat width = size.width * scale;
    const CGFloat height = size.height * scale;
    return NSMakeRect((pixelSize - width) / 2, (pixelSize - height) / 2, width, height);
}

ObjcRef<NSBitmapImageRep> makeBitmap(int pixelSize) {
    return ObjcRef<NSBitmapImageRep>::adopted([[NSBitmapImageRep alloc]
        initWithBitmapDataPlanes:nullptr
                      pixelsWide:pixelSize
                      pixelsHigh:pixelSize
                   bitsPerSample:8
                 samplesPerPixel:bytesPerPixel
                        hasAlpha:YES
                        isPlanar:NO
                  colorSpaceName:NSDeviceRGBColorSpace
                     bytesPerRow:0
                    bitsPerPixel:0]);
}

bool draw(NSImage *symbol, NSBitmapImageRep *bitmap, int pixelSize) {
    NSGraphicsContext *const context = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    if (context == nil)
        return false;
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:context];
    [symbol drawInRect:centredIn([symbol size], pixelSize)
              fromRect:NSZeroRect
             operation:NSCompositingOperationSourceOver
              fraction:1];
    [NSGraphicsContext restoreGraphicsState];
    return true;
}

quint32 scaled(quint32 component, quint32 alpha) {
    return (component * alpha + 127) / 255;
}

quint32 premultiplied(quint32 color, quint32 coverage) {
    const quint32 alpha = scaled(color >> 24, coverage);
    return alpha << 24 | scaled(color >> 16 & 0xff, alpha) << 16 |
           scaled(color >> 8 & 0xff, alpha) << 8 | scaled(color & 0xff, alpha);
}

// The symbol is a template: only its coverage counts.
QByteArray tinted(NSBitmapImageRep *bitmap, int pixelSize, quint32 color) {
    QByteArray pixels(qsizetype{pixelSize} * pixelSize * bytesPerPixel, Qt::Uninitialized);
    char *to = pixels.data();
    for (int y = 0; y < pixelSize; ++y) {
        const unsigned char *from = [bitmap bitmapData] + [bitmap bytesPerRow] * y;
        for (int x = 0; x < pixelSize; ++x, from += bytesPerPixel, to += bytesPerPixel) {
            const quint32 pixel = premultiplied(color, from[alphaByte]);
            std::memcpy(to, &pixel, sizeof pixel);
        }
    }
    return pixels;
}

} // namespace

QByteArray systemSymbolImage(const QString &name, int pixelSize, quint32 color) {
    if (pixelSize <= 0)
        return {};
    @autoreleasepool {
        NSImage *const symbol = symbolFitting(name, pixelSize);
        if (symbol == nil)
            return {};
        const auto bitmap = makeBitmap(pixelSize);
        if (!bitmap || !draw(symbol, bitmap.get(), pixelSize))
            return {};
        return tinted(bitmap.get(), pixelSize, color);
    }
}

} // namespace quillmender
