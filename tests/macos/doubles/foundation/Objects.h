#pragma once

#import <Foundation/Foundation.h>
#include <any>
#include <string>

namespace quillmender::doubles {

/// What stands behind one object of the doubles. It outlives the object, so that a message to a
/// deallocated one is noticed.
struct ObjectRecord {
    std::string kind;
    long references = 1;
    bool isDead = false;
    /// Made once by its framework, never deallocated; its first reference is nobody's.
    bool isPermanent = false;
    std::any state;
};

ObjectRecord &recordOf(id object);

/// The state of an object, made at its first use and destroyed with it.
template <typename State> State &stateOf(id object) {
    std::any &state = recordOf(object).state;
    if (!state.has_value())
        state.emplace<State>();
    return std::any_cast<State &>(state);
}

id madePermanent(Class type);

/// Makes one of a framework's own objects, such as the shared application.
template <typename Object> Object *permanent() {
    return static_cast<Object *>(madePermanent([Object class]));
}

/// Has the innermost autorelease pool release it; a leak without any pool.
void addToPool(id object);

/// Frees what deallocated objects left behind. Not while an autorelease pool is open.
void forgetDeadObjects();

} // namespace quillmender::doubles
