#include "platform/macos/SystemAppearance.h"

#import <AppKit/AppKit.h>
#include <algorithm>
#include <cmath>

namespace quillmender {

namespace {

ColorScheme colorScheme() {
    NSAppearance *const appearance = [[NSApplication sharedApplication] effectiveAppearance];
    NSAppearanceName const name = [appearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    if (name == nil)
        return ColorScheme::noPreference;
    return [name isEqualToString:NSAppearanceNameDarkAqua] ? ColorScheme::dark : ColorScheme::light;
}

quint32 byteOf(CGFloat component) {
    return static_cast<quint32>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

std::optional<quint32> accentColor() {
    NSColor *const accent =
        [[NSColor controlAccentColor] colorUsingColorSpace:[NSColorSpace sRGBColorSpace]];
    if (accent == nil)
        return std::nullopt;
    return byteOf([accent redComponent]) << 16 | byteOf([accent greenComponent]) << 8 |
           byteOf([accent blueComponent]);
}

} // namespace

Appearance systemAppearance() {
    @autoreleasepool {
        return {colorScheme(), accentColor()};
    }
}

} // namespace quillmender
