#include "doubles/CallLog.h"
#include "doubles/appkit/RunningApplications.h"
#include "doubles/appkit/SystemColors.h"
#include "doubles/foundation/Objects.h"

#import <AppKit/AppKit.h>

using namespace quillmender::doubles;

@implementation NSApplication

+ (NSApplication *)sharedApplication {
    static NSApplication *const application = permanent<NSApplication>();
    return application;
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy {
    CallLog::shared().add("NSApplication setActivationPolicy " + std::to_string(activationPolicy));
    return YES;
}

- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps {
    CallLog::shared().add(std::string("NSApplication activateIgnoringOtherApps ") +
                          (ignoreOtherApps ? "YES" : "NO"));
    RunningApplications::shared().bringToFront(RunningApplications::own);
}

// Windows that are ordered out do not change it.
- (BOOL)isActive {
    return RunningApplications::shared().frontmost == RunningApplications::own;
}

- (void)hide:(id)sender {
    CallLog::shared().add("NSApplication hide");
    RunningApplications::shared().hideOwn();
}

- (NSAppearance *)effectiveAppearance {
    if (SystemColors::shared().hasNoAppearance)
        return nil;
    return [[[NSAppearance alloc] init] autorelease];
}

@end
