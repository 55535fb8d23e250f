#include "platform/macos/BundleVersion.h"

#include "platform/macos/ObjcText.h"

#import <Foundation/Foundation.h>

namespace quillmender {

std::optional<QString> bundleVersion() {
    @autoreleasepool {
        const id version =
            [[NSBundle mainBundle] objectForInfoDictionaryKey:@"CFBundleShortVersionString"];
        if (![version isKindOfClass:[NSString class]])
            return std::nullopt;
        return toQString(version);
    }
}

} // namespace quillmender
