#include "doubles/appkit/SystemColors.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Observers.h"

#import <AppKit/AppKit.h>

NSNotificationName const NSSystemColorsDidChangeNotification =
    @"NSSystemColorsDidChangeNotification";
NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";

namespace quillmender::doubles {

SystemColors &SystemColors::shared() {
    static SystemColors colors;
    return colors;
}

void SystemColors::becomeDark(bool dark) {
    isDark = dark;
    noteChange([NSApplication sharedApplication], @"effectiveAppearance");
}

void SystemColors::changeAccent(std::optional<AccentColor> color) {
    accent = color;
    post([NSNotificationCenter defaultCenter], NSSystemColorsDidChangeNotification);
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSColorSpace

+ (NSColorSpace *)sRGBColorSpace {
    static NSColorSpace *const space = permanent<NSColorSpace>();
    return space;
}

@end

@implementation NSColor

// A catalogue colour: it has no components of its own.
+ (NSColor *)controlAccentColor {
    return [[[NSColor alloc] init] autorelease];
}

- (NSColor *)colorUsingColorSpace:(NSColorSpace *)space {
    if (!SystemColors::shared().accent || space == nil)
        return nil;
    NSColor *color = [[[NSColor alloc] init] autorelease];
    stateOf<AccentColor>(color) = *SystemColors::shared().accent;
    return color;
}

- (CGFloat)redComponent {
    return stateOf<AccentColor>(self).red;
}

- (CGFloat)greenComponent {
    return stateOf<AccentColor>(self).green;
}

- (CGFloat)blueComponent {
    return stateOf<AccentColor>(self).blue;
}

@end

@implementation NSAppearance

- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName> *)appearances {
    NSAppearanceName own =
        SystemColors::shared().isDark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua;
    for (NSAppearanceName name in appearances) {
        if ([name isEqualToString:own])
            return name;
    }
    return nil;
}

@end
