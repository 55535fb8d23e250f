#pragma once

#include <Foundation/NSObject.h>

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject
+ (instancetype)dictionaryWithObject:(ObjectType)object forKey:(KeyType)key;
- (NSUInteger)count;
- (ObjectType)objectForKey:(KeyType)aKey;
@end
