#include "doubles/Frameworks.h"
#include "doubles/foundation/Held.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Observers.h"
#include "doubles/foundation/Text.h"

#include <vector>

namespace quillmender::doubles {

namespace {

// Neither kind of observer is retained, as in the frameworks.
struct Registration {
    id source;
    id observer;
    SEL selector;
    std::string name;
    void *context;
};

std::vector<Registration> &registrations() {
    static std::vector<Registration> all;
    return all;
}

struct NotificationState {
    Held<NSString> name;
    Held<NSDictionary> userInfo;
};

} // namespace

void post(NSNotificationCenter *center, NSString *name, NSDictionary *userInfo) {
    @autoreleasepool {
        NSNotification *const notification = [[[NSNotification alloc] init] autorelease];
        stateOf<NotificationState>(notification) = {Held(name), Held(userInfo)};
        const std::vector<Registration> all = registrations();
        for (const Registration &one : all) {
            if (one.source == center && one.name == utf8(name) && one.selector != nullptr)
                [one.observer performSelector:one.selector withObject:notification];
        }
    }
}

void noteChange(NSObject *object, NSString *keyPath) {
    @autoreleasepool {
        const std::vector<Registration> all = registrations();
        for (const Registration &one : all) {
            if (one.source == object && one.name == utf8(keyPath) && one.selector == nullptr)
                [one.observer observeValueForKeyPath:keyPath
                                            ofObject:object
                                              change:nil
                                             context:one.context];
        }
    }
}

std::size_t observerCount() {
    return registrations().size();
}

void forgetObservers() {
    registrations().clear();
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSNotification

- (NSNotificationName)name {
    return stateOf<NotificationState>(self).name.get();
}

- (id)object {
    return nil;
}

- (NSDictionary *)userInfo {
    return stateOf<NotificationState>(self).userInfo.get();
}

@end

@implementation NSNotificationCenter

+ (NSNotificationCenter *)defaultCenter {
    static NSNotificationCenter *const center = permanent<NSNotificationCenter>();
    return center;
}

- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(NSNotificationName)aName
             object:(id)anObject {
    registrations().push_back({self, observer, aSelector, utf8(aName), nullptr});
}

- (void)removeObserver:(id)observer {
    std::erase_if(registrations(), [&](const Registration &one) {
        return one.source == self && one.observer == observer && one.selector != nullptr;
    });
}

@end

@implementation NSObject (NSKeyValueObserving)

- (void)observeValueForKeyPath:(NSString *)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id> *)change
                       context:(void *)context {
}

@end

@implementation NSObject (NSKeyValueObserverRegistration)

- (void)addObserver:(NSObject *)observer
         forKeyPath:(NSString *)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void *)context {
    registrations().push_back({self, observer, nullptr, utf8(keyPath), context});
}

- (void)removeObserver:(NSObject *)observer forKeyPath:(NSString *)keyPath context:(void *)context {
    std::erase_if(registrations(), [&](const Registration &one) {
        return one.source == self && one.observer == observer && one.selector == nullptr &&
               one.name == utf8(keyPath) && one.context == context;
    });
}

@end
