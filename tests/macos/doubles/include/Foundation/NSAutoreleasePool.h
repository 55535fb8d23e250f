#pragma once

#include <Foundation/NSObject.h>

@interface NSAutoreleasePool : NSObject
- (void)drain;
@end
