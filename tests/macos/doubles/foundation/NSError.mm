#include "doubles/foundation/Errors.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Text.h"

using namespace quillmender::doubles;

@implementation NSError

- (NSInteger)code {
    return 1;
}

- (NSString *)localizedDescription {
    return nsString(stateOf<std::string>(self));
}

@end

namespace quillmender::doubles {

NSError *errorDescribed(const std::string &description) {
    NSError *error = [[[NSError alloc] init] autorelease];
    stateOf<std::string>(error) = description;
    return error;
}

} // namespace quillmender::doubles
