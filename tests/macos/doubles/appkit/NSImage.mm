#include "doubles/CallLog.h"
#include "doubles/appkit/Bitmap.h"
#include "doubles/appkit/Symbols.h"
#include "doubles/foundation/Held.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Text.h"

#import <AppKit/AppKit.h>
#include <cmath>

const NSFontWeight NSFontWeightRegular = 0;
NSColorSpaceName const NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";

namespace quillmender::doubles {

Symbols &Symbols::shared() {
    static Symbols symbols;
    return symbols;
}

Symbol symbolOf(NSImage *image) {
    return image == nil ? Symbol() : stateOf<Symbol>(image);
}

namespace {

struct ContextStack {
    Held<NSGraphicsContext> current;
    std::vector<Held<NSGraphicsContext>> saved;
};

ContextStack &contexts() {
    static ContextStack stack;
    return stack;
}

} // namespace

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSImageSymbolConfiguration

+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight {
    NSImageSymbolConfiguration *configuration = [[[self alloc] init] autorelease];
    stateOf<CGFloat>(configuration) = pointSize;
    return configuration;
}

@end

@implementation NSImage

+ (instancetype)imageWithSystemSymbolName:(NSString *)symbolName
                 accessibilityDescription:(NSString *)description {
    CallLog::shared().add("NSImage imageWithSystemSymbolName " + utf8(symbolName) + " " +
                          utf8(description));
    if (!Symbols::shared().names.contains(utf8(symbolName)))
        return nil;
    NSImage *image = [[[self alloc] init] autorelease];
    stateOf<Symbol>(image) = {utf8(symbolName), utf8(description)};
    return image;
}

- (NSImage *)imageWithSymbolConfiguration:(NSImageSymbolConfiguration *)configuration {
    NSImage *image = [[[NSImage alloc] init] autorelease];
    stateOf<Symbol>(image) = stateOf<Symbol>(self);
    stateOf<Symbol>(image).pointSize = stateOf<CGFloat>(configuration);
    return image;
}

- (NSSize)size {
    const double height = stateOf<Symbol>(self).pointSize;
    return NSMakeSize(2 * height, height);
}

- (void)setSize:(NSSize)size {
}

- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction {
    NSGraphicsContext *context = [NSGraphicsContext currentContext];
    if (context == nil)
        return;
    Bitmap &bitmap = stateOf<Bitmap>(stateOf<Held<NSBitmapImageRep>>(context).get());
    for (long y = std::lround(rect.origin.y); y < std::lround(rect.origin.y + rect.size.height);
         ++y) {
        const bool isUpper = double(y) >= rect.origin.y + rect.size.height / 2;
        for (long x = std::lround(rect.origin.x); x < std::lround(rect.origin.x + rect.size.width);
             ++x)
            bitmap.cover(x, y, isUpper ? 255 : 85);
    }
}

@end

@implementation NSBitmapImageRep

- (instancetype)initWithBitmapDataPlanes:(unsigned char **)planes
                              pixelsWide:(NSInteger)width
                              pixelsHigh:(NSInteger)height
                           bitsPerSample:(NSInteger)bps
                         samplesPerPixel:(NSInteger)spp
                                hasAlpha:(BOOL)alpha
                                isPlanar:(BOOL)isPlanar
                          colorSpaceName:(NSColorSpaceName)colorSpaceName
                             bytesPerRow:(NSInteger)rBytes
                            bitsPerPixel:(NSInteger)pBits {
    self = [super init];
    if (planes != nullptr || bps != 8 || spp != 4 || !alpha || isPlanar || rBytes != 0 ||
        (pBits != 0 && pBits != 32)) {
        [self release];
        return nil;
    }
    stateOf<Bitmap>(self) = Bitmap(width, height);
    return self;
}

- (unsigned char *)bitmapData {
    return stateOf<Bitmap>(self).bytes.data();
}

- (NSInteger)bytesPerRow {
    return stateOf<Bitmap>(self).bytesPerRow;
}

@end

@implementation NSGraphicsContext

+ (NSGraphicsContext *)graphicsContextWithBitmapImageRep:(NSBitmapImageRep *)bitmapRep {
    if (Symbols::shared().hasNoContext)
        return nil;
    NSGraphicsContext *context = [[[NSGraphicsContext alloc] init] autorelease];
    stateOf<Held<NSBitmapImageRep>>(context) = Held(bitmapRep);
    return context;
}

+ (NSGraphicsContext *)currentContext {
    return contexts().current.get();
}

+ (void)setCurrentContext:(NSGraphicsContext *)context {
    contexts().current = Held(context);
}

+ (void)saveGraphicsState {
    contexts().saved.push_back(contexts().current);
}

+ (void)restoreGraphicsState {
    contexts().current = contexts().saved.back();
    contexts().saved.pop_back();
}

@end
