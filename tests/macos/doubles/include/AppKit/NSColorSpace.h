#pragma once

#include <Foundation/Foundation.h>

@interface NSColorSpace : NSObject
@property(class, readonly, strong) NSColorSpace *sRGBColorSpace;
@end
