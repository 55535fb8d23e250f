#pragma once

#include <CoreFoundation/CFCGTypes.h>
#include <Foundation/NSObjCRuntime.h>

using NSPoint = CGPoint;
using NSSize = CGSize;
using NSRect = CGRect;

FOUNDATION_EXPORT const NSRect NSZeroRect;

inline NSSize NSMakeSize(CGFloat width, CGFloat height) {
    return {width, height};
}
inline CGFloat NSHeight(NSRect aRect) {
    return aRect.size.height;
}
inline CGFloat NSMaxY(NSRect aRect) {
    return aRect.origin.y + aRect.size.height;
}
inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {{x, y}, {width, height}};
}
