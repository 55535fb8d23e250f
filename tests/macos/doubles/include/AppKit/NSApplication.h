#pragma once

#include <AppKit/NSRunningApplication.h>
#include <Foundation/Foundation.h>

@class NSAppearance;

@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication *sharedApplication;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
@property(readonly, getter=isActive) BOOL active;
- (void)hide:(id)sender;
@property(readonly, strong) NSAppearance *effectiveAppearance;
@end
