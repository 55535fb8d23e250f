#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Text.h"

using namespace quillmender::doubles;

@implementation NSURL

// As the real one: nothing for what is no URL.
+ (instancetype)URLWithString:(NSString *)URLString {
    const std::string text = utf8(URLString);
    if (text.empty() || text.find_first_of(" <>\"") != std::string::npos)
        return nil;
    NSURL *url = [[[self alloc] init] autorelease];
    stateOf<std::string>(url) = text;
    return url;
}

- (NSString *)absoluteString {
    return nsString(stateOf<std::string>(self));
}

@end
