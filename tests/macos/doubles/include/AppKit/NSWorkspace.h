#pragma once

#include <AppKit/NSRunningApplication.h>
#include <Foundation/Foundation.h>

FOUNDATION_EXPORT NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
FOUNDATION_EXPORT NSString *const NSWorkspaceApplicationKey;

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
@property(readonly, strong) NSNotificationCenter *notificationCenter;
@property(readonly, strong) NSRunningApplication *frontmostApplication;
- (BOOL)openURL:(NSURL *)url;
@end
