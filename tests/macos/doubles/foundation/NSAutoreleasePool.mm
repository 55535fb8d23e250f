#include "doubles/LiveObjects.h"
#include "doubles/foundation/Objects.h"

#include <vector>

namespace quillmender::doubles {

namespace {

std::vector<std::vector<id>> &pools() {
    static std::vector<std::vector<id>> open;
    return open;
}

} // namespace

void addToPool(id object) {
    if (pools().empty())
        LiveObjects::shared().gained("autoreleased without a pool: " + recordOf(object).kind);
    else
        pools().back().push_back(object);
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSAutoreleasePool

- (instancetype)init {
    self = [super init];
    pools().emplace_back();
    return self;
}

- (void)drain {
    const std::vector<id> objects = std::move(pools().back());
    pools().pop_back();
    for (const id object : objects)
        [object release];
    [self release];
}

@end
