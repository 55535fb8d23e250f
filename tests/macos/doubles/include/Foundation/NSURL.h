#pragma once

#include <Foundation/NSObject.h>

@interface NSURL : NSObject
+ (instancetype)URLWithString:(NSString *)URLString;
- (NSString *)absoluteString;
@end
