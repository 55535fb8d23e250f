#pragma once

#include <Foundation/NSEnumerator.h>
#include <Foundation/NSObject.h>

@interface NSArray<__covariant ObjectType> : NSObject <NSFastEnumeration>
+ (instancetype)array;
+ (instancetype)arrayWithObjects:(const ObjectType[])objects count:(NSUInteger)cnt;
- (NSUInteger)count;
- (ObjectType)objectAtIndex:(NSUInteger)index;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)arrayWithCapacity:(NSUInteger)numItems;
- (void)addObject:(ObjectType)anObject;
@end
