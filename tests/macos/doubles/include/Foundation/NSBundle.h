#pragma once

#include <Foundation/NSObject.h>

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle *mainBundle;
- (id)objectForInfoDictionaryKey:(NSString *)key;
@end
