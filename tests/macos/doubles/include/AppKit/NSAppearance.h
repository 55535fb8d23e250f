#pragma once

#include <Foundation/Foundation.h>

using NSAppearanceName = NSString *;

FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameAqua;
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameDarkAqua;

@interface NSAppearance : NSObject
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName> *)appearances;
@end
