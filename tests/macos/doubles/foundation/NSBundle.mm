#include "doubles/CallLog.h"
#include "doubles/foundation/Bundle.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Text.h"

namespace quillmender::doubles {

Bundle &Bundle::shared() {
    static Bundle bundle;
    return bundle;
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSBundle

+ (NSBundle *)mainBundle {
    static NSBundle *const bundle = permanent<NSBundle>();
    return bundle;
}

- (id)objectForInfoDictionaryKey:(NSString *)key {
    CallLog::shared().add("NSBundle objectForInfoDictionaryKey " + utf8(key));
    const Bundle &bundle = Bundle::shared();
    if (utf8(key) != "CFBundleShortVersionString" || !bundle.shortVersion)
        return nil;
    if (!bundle.versionIsText)
        return [NSArray array];
    return nsString(*bundle.shortVersion);
}

@end
