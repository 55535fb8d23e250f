#pragma once

#import <AppKit/AppKit.h>
#include <functional>

/// Calls a listener when the appearance of the application or the system's colours change.
@interface QuillmenderAppearanceObserver : NSObject {
    std::function<void()> *listener_;
}
/// Observes until `stop`, which must come before the last release.
- (instancetype)initWithListener:(std::function<void()>)listener;
- (void)stop;
@end
