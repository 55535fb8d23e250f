#pragma once

#include <Foundation/NSObject.h>

@class NSDictionary<KeyType, ObjectType>;

using NSNotificationName = NSString *;

@interface NSNotification : NSObject
@property(readonly, copy) NSNotificationName name;
@property(readonly, retain) id object;
@property(readonly, copy) NSDictionary *userInfo;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter *defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(NSNotificationName)aName
             object:(id)anObject;
- (void)removeObserver:(id)observer;
@end
