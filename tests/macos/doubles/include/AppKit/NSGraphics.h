#pragma once

#include <Foundation/Foundation.h>

using NSColorSpaceName = NSString *;

FOUNDATION_EXPORT NSColorSpaceName const NSDeviceRGBColorSpace;

typedef NS_ENUM(NSUInteger, NSCompositingOperation) {
    NSCompositingOperationCopy = 1,
    NSCompositingOperationSourceOver = 2,
};
