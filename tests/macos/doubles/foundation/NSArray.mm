#include "doubles/foundation/Held.h"
#include "doubles/foundation/Objects.h"

#include <vector>

using namespace quillmender::doubles;

using Elements = std::vector<Held<NSObject>>;

@implementation NSArray

+ (instancetype)array {
    return [[[self alloc] init] autorelease];
}

+ (instancetype)arrayWithObjects:(const id[])objects count:(NSUInteger)cnt {
    NSArray *array = [self array];
    for (NSUInteger index = 0; index < cnt; ++index)
        stateOf<Elements>(array).emplace_back(objects[index]);
    return array;
}

- (NSUInteger)count {
    return stateOf<Elements>(self).size();
}

- (id)objectAtIndex:(NSUInteger)index {
    return stateOf<Elements>(self).at(index).get();
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id *)buffer
                                    count:(NSUInteger)len {
    static unsigned long never = 0;
    state->mutationsPtr = &never;
    state->itemsPtr = buffer;
    NSUInteger given = 0;
    while (given < len && state->state < [self count])
        buffer[given++] = [self objectAtIndex:state->state++];
    return given;
}

@end

@implementation NSMutableArray

+ (instancetype)arrayWithCapacity:(NSUInteger)numItems {
    return [self array];
}

- (void)addObject:(id)anObject {
    stateOf<Elements>(self).emplace_back(anObject);
}

@end
