#pragma once

#include <Foundation/NSObject.h>

@interface NSError : NSObject
- (NSInteger)code;
- (NSString *)localizedDescription;
@end
