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
inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {{x, y}, {width, height}};
}
