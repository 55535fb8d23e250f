#include "doubles/LiveObjects.h"
#include "doubles/foundation/Objects.h"

#include <objc/message.h>
#include <objc/runtime.h>
#include <unordered_map>
#include <utility>

// What a deallocated object becomes: it answers no message.
__attribute__((objc_root_class))
@interface DeallocatedObject {
    Class isa;
}
@end
@implementation DeallocatedObject
@end

namespace quillmender::doubles {

namespace {

// Never destroyed: what is left in it at the end of the program is not what a leak checker should
// look at. Leaks are counted.
std::unordered_map<id, ObjectRecord> &records() {
    static auto *const all = new std::unordered_map<id, ObjectRecord>();
    return *all;
}

id answerNothing(id, SEL, ...) {
    return nil;
}

// Called by the runtime for a message that the receiver does not answer.
IMP noteUnansweredMessage(id receiver, SEL selector) {
    const auto found = records().find(receiver);
    const std::string kind = found == records().end() ? "a class" : found->second.kind;
    const bool isDead = found != records().end() && found->second.isDead;
    LiveObjects::shared().gaveBack(std::string("message ") + sel_getName(selector) + " to " +
                                   (isDead ? "deallocated " : "") + kind);
    return reinterpret_cast<IMP>(answerNothing);
}

const bool isInstalled = [] {
    __objc_msg_forward2 = noteUnansweredMessage;
    return true;
}();

} // namespace

ObjectRecord &recordOf(id object) {
    return records().at(object);
}

id madePermanent(Class type) {
    const id object = [[type alloc] init];
    ObjectRecord &record = recordOf(object);
    record.isPermanent = true;
    LiveObjects::shared().gaveBack(record.kind);
    return object;
}

void forgetDeadObjects() {
    for (auto entry = records().begin(); entry != records().end();) {
        if (entry->second.isDead) {
            object_dispose(entry->first);
            entry = records().erase(entry);
        } else {
            ++entry;
        }
    }
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSObject

// The runtime sends it to the root class.
+ (void)initialize {
}

+ (instancetype)alloc {
    const id object = class_createInstance(self, 0);
    ObjectRecord record;
    record.kind = class_getName(self);
    LiveObjects::shared().gained(record.kind);
    records().insert_or_assign(object, record);
    return object;
}

+ (instancetype)new {
    return [[self alloc] init];
}

+ (Class)class {
    return self;
}

- (instancetype)init {
    return self;
}

- (void)dealloc {
    ObjectRecord &record = recordOf(self);
    record.isDead = true;
    // Taken out first: what it releases may look this object up.
    const std::any state = std::exchange(record.state, std::any());
    object_setClass(self, objc_getClass("DeallocatedObject"));
}

- (id)copy {
    return [static_cast<id<NSCopying>>(self) copyWithZone:nullptr];
}

- (instancetype)retain {
    ObjectRecord &record = recordOf(self);
    ++record.references;
    LiveObjects::shared().gained(record.kind);
    return self;
}

- (oneway void)release {
    ObjectRecord &record = recordOf(self);
    --record.references;
    LiveObjects::shared().gaveBack(record.kind);
    if (record.references != 0 || record.isPermanent)
        return;
    [self dealloc];
    if (!record.isDead)
        LiveObjects::shared().gained("dealloc without that of the superclass: " + record.kind);
}

- (instancetype)autorelease {
    addToPool(self);
    return self;
}

- (NSUInteger)retainCount {
    return static_cast<NSUInteger>(recordOf(self).references);
}

- (Class)class {
    return object_getClass(self);
}

- (BOOL)isKindOfClass:(Class)aClass {
    for (Class own = object_getClass(self); own != Nil; own = class_getSuperclass(own)) {
        if (own == aClass)
            return YES;
    }
    return NO;
}

- (BOOL)respondsToSelector:(SEL)aSelector {
    return class_respondsToSelector(object_getClass(self), aSelector);
}

- (id)performSelector:(SEL)aSelector withObject:(id)object {
    return objc_msg_lookup(self, aSelector)(self, aSelector, object);
}

- (BOOL)isEqual:(id)object {
    return self == object;
}

- (NSUInteger)hash {
    return reinterpret_cast<NSUInteger>(self);
}

@end
