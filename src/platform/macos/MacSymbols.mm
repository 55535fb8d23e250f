#include "platform/macos/MacSymbols.h"

#include "platform/macos/ObjcText.h"

#import <AppKit/AppKit.h>
#include <algorithm>

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

QRgb premultiplied(QRgb color, quint32 coverage) {
    const quint32 alpha = scaled(color >> 24, coverage);
    return alpha << 24 | scaled(color >> 16 & 0xff, alpha) << 16 |
           scaled(color >> 8 & 0xff, alpha) << 8 | scaled(color & 0xff, alpha);
}

// The symbol is a template: only its coverage counts.
QImage tinted(NSBitmapImageRep *bitmap, int pixelSize, QRgb color) {
    QImage image(pixelSize, pixelSize, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < pixelSize; ++y) {
        const unsigned char *from = [bitmap bitmapData] + [bitmap bytesPerRow] * y;
        auto *to = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < pixelSize; ++x, from += bytesPerPixel)
            to[x] = premultiplied(color, from[alphaByte]);
    }
    return image;
}

} // namespace

QImage MacSymbols::image(const QString &name, int pixelSize, const QColor &color) {
    if (pixelSize <= 0)
        return {};
    @autoreleasepool {
        NSImage *const symbol = symbolFitting(name, pixelSize);
        if (symbol == nil)
            return {};
        const auto bitmap = makeBitmap(pixelSize);
        if (!bitmap || !draw(symbol, bitmap.get(), pixelSize))
            return {};
        return tinted(bitmap.get(), pixelSize, color.rgba());
    }
}

} // namespace quillmender
