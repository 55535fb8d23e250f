#pragma once

#include <Foundation/NSObjCRuntime.h>

struct _NSRange {
    NSUInteger location;
    NSUInteger length;
};
using NSRange = _NSRange;

inline NSRange NSMakeRange(NSUInteger location, NSUInteger length) {
    return {location, length};
}
