#include "platform/macos/MacAppearance.h"

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

int byteOf(CGFloat component) {
    return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

std::optional<QColor> accentColor() {
    NSColor *const accent =
        [[NSColor controlAccentColor] colorUsingColorSpace:[NSColorSpace sRGBColorSpace]];
    if (accent == nil)
        return std::nullopt;
    return QColor(byteOf([accent redComponent]), byteOf([accent greenComponent]),
                  byteOf([accent blueComponent]));
}

} // namespace

MacAppearance::MacAppearance() {
    @autoreleasepool {
        observer_ = ObjcRef<QuillmenderAppearanceObserver>::adopted(
            [[QuillmenderAppearanceObserver alloc] initWithListener:[this] {
                if (listener_)
                    listener_();
            }]);
    }
}

MacAppearance::~MacAppearance() {
    @autoreleasepool {
        [observer_.get() stop];
    }
}

DesktopColors MacAppearance::colors() {
    @autoreleasepool {
        return {colorScheme(), accentColor()};
    }
}

void MacAppearance::onChange(std::function<void()> listener) {
    listener_ = std::move(listener);
}

} // namespace quillmender
