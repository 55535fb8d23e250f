#pragma once

#include <Foundation/NSObject.h>

@interface NSData : NSObject
+ (instancetype)data;
+ (instancetype)dataWithBytes:(const void *)bytes length:(NSUInteger)length;
- (NSUInteger)length;
- (const void *)bytes;
@end
