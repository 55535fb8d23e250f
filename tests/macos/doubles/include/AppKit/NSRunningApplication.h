#pragma once

#include <Foundation/Foundation.h>
#include <sys/types.h>

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
};

typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps = 1 << 1,
};

@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication *currentApplication;
@property(readonly) pid_t processIdentifier;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
@end
