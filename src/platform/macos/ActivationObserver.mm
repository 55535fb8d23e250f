#include "platform/macos/ActivationObserver.h"

@implementation QuillmenderActivationObserver

- (instancetype)initWithWorkspace:(NSWorkspace *)workspace {
    self = [super init];
    if (self == nil)
        return nil;
    workspace_ = [workspace retain];
    [[workspace_ notificationCenter] addObserver:self
                                        selector:@selector(applicationDidActivate:)
                                            name:NSWorkspaceDidActivateApplicationNotification
                                          object:nil];
    [self remember:[workspace_ frontmostApplication]];
    return self;
}

- (void)stop {
    [[workspace_ notificationCenter] removeObserver:self];
}

- (void)dealloc {
    [lastOther_ release];
    [workspace_ release];
    [super dealloc];
}

- (void)remember:(NSRunningApplication *)application {
    const pid_t own = [[NSRunningApplication currentApplication] processIdentifier];
    if (application == nil || [application processIdentifier] == own)
        return;
    [application retain];
    [lastOther_ release];
    lastOther_ = application;
}

- (void)applicationDidActivate:(NSNotification *)notification {
    [self remember:[[notification userInfo] objectForKey:NSWorkspaceApplicationKey]];
}

- (NSRunningApplication *)frontmostOther {
    NSRunningApplication *frontmost = [workspace_ frontmostApplication];
    if (frontmost == nil)
        return nil;
    [self remember:frontmost];
    return lastOther_;
}

@end
