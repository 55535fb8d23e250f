#include "platform/macos/MacAccessibilityAccess.h"

#include "platform/macos/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>

namespace quillmender {

bool MacAccessibilityAccess::isGranted() {
    return AXIsProcessTrusted() != 0;
}

void MacAccessibilityAccess::request() {
    const void *keys[] = {kAXTrustedCheckOptionPrompt};
    const void *values[] = {kCFBooleanTrue};
    const auto options = CFRef<CFDictionaryRef>::adopted(
        CFDictionaryCreate(kCFAllocatorDefault, keys, values, 1, &kCFTypeDictionaryKeyCallBacks,
                           &kCFTypeDictionaryValueCallBacks));
    // Without options the system shows no prompt.
    AXIsProcessTrustedWithOptions(options.get());
}

} // namespace quillmender
