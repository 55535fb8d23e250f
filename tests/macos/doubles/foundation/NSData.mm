#include "doubles/foundation/Objects.h"

using namespace quillmender::doubles;

@implementation NSData

+ (instancetype)data {
    return [[[self alloc] init] autorelease];
}

+ (instancetype)dataWithBytes:(const void *)bytes length:(NSUInteger)length {
    NSData *data = [self data];
    stateOf<std::string>(data).assign(static_cast<const char *>(bytes), length);
    return data;
}

- (NSUInteger)length {
    return stateOf<std::string>(self).size();
}

- (const void *)bytes {
    return stateOf<std::string>(self).data();
}

@end
