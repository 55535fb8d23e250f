#include "doubles/CallLog.h"
#include "doubles/appkit/RunningApplications.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Observers.h"
#include "doubles/foundation/Text.h"

#import <AppKit/AppKit.h>

NSNotificationName const NSWorkspaceDidActivateApplicationNotification =
    @"NSWorkspaceDidActivateApplicationNotification";
NSString *const NSWorkspaceApplicationKey = @"NSWorkspaceApplicationKey";

namespace quillmender::doubles {

namespace {

NSRunningApplication *application(int processIdentifier) {
    NSRunningApplication *const made = [[[NSRunningApplication alloc] init] autorelease];
    stateOf<int>(made) = processIdentifier;
    return made;
}

} // namespace

RunningApplications &RunningApplications::shared() {
    static RunningApplications applications;
    return applications;
}

void RunningApplications::bringToFront(int processIdentifier) {
    if (frontmost != own)
        frontmostBeforeOwn = frontmost;
    frontmost = processIdentifier;
    @autoreleasepool {
        post([[NSWorkspace sharedWorkspace] notificationCenter],
             NSWorkspaceDidActivateApplicationNotification,
             [NSDictionary dictionaryWithObject:application(processIdentifier)
                                         forKey:NSWorkspaceApplicationKey]);
    }
}

void RunningApplications::hideOwn() {
    if (frontmost != own)
        return;
    if (frontmostBeforeOwn)
        bringToFront(*frontmostBeforeOwn);
    else
        frontmost.reset();
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSRunningApplication

+ (NSRunningApplication *)currentApplication {
    return application(RunningApplications::own);
}

- (pid_t)processIdentifier {
    return stateOf<int>(self);
}

- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    CallLog::shared().add("NSRunningApplication " + std::to_string([self processIdentifier]) +
                          " activateWithOptions " + std::to_string(options));
    auto &applications = RunningApplications::shared();
    if (applications.terminated.contains([self processIdentifier]))
        return NO;
    applications.bringToFront([self processIdentifier]);
    return YES;
}

@end

@implementation NSWorkspace

+ (NSWorkspace *)sharedWorkspace {
    static NSWorkspace *const workspace = permanent<NSWorkspace>();
    return workspace;
}

- (NSNotificationCenter *)notificationCenter {
    static NSNotificationCenter *const center = permanent<NSNotificationCenter>();
    return center;
}

- (NSRunningApplication *)frontmostApplication {
    CallLog::shared().add("NSWorkspace frontmostApplication");
    const std::optional<int> frontmost = RunningApplications::shared().frontmost;
    return frontmost ? application(*frontmost) : nil;
}

- (BOOL)openURL:(NSURL *)url {
    CallLog::shared().add("NSWorkspace openURL " + utf8([url absoluteString]));
    return RunningApplications::shared().opensUrls;
}

@end
