#pragma once

#import <AppKit/AppKit.h>

/// Remembers which other application was in front last, beginning with the one that is when it is
/// made.
@interface QuillmenderActivationObserver : NSObject {
    NSWorkspace *workspace_;
    NSRunningApplication *lastOther_;
}
/// Observes until `stop`, which must come before the last release.
- (instancetype)initWithWorkspace:(NSWorkspace *)workspace;
- (void)stop;

/// The application in front; the last one that was while this program itself is. Nil for none.
- (NSRunningApplication *)frontmostOther;
@end
