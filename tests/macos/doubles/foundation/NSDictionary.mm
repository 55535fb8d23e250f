#include "doubles/foundation/Held.h"
#include "doubles/foundation/Objects.h"

#include <vector>

using namespace quillmender::doubles;

using Entries = std::vector<std::pair<Held<NSObject>, Held<NSObject>>>;

@implementation NSDictionary

+ (instancetype)dictionaryWithObject:(id)object forKey:(id)key {
    NSDictionary *dictionary = [[[self alloc] init] autorelease];
    stateOf<Entries>(dictionary).emplace_back(key, object);
    return dictionary;
}

- (NSUInteger)count {
    return stateOf<Entries>(self).size();
}

- (id)objectForKey:(id)aKey {
    for (const auto &[key, object] : stateOf<Entries>(self)) {
        if ([key.get() isEqual:aKey])
            return object.get();
    }
    return nil;
}

@end
