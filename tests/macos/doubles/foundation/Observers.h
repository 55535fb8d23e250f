#pragma once

#import <Foundation/Foundation.h>

namespace quillmender::doubles {

/// Calls whoever observes that notification in that center.
void post(NSNotificationCenter *center, NSString *name, NSDictionary *userInfo = nil);

/// Tells whoever observes that key of the object that it has changed.
void noteChange(NSObject *object, NSString *keyPath);

/// Those that were not removed.
void forgetObservers();

} // namespace quillmender::doubles
