#pragma once

#include <gtest/gtest.h>

#include <CoreFoundation/CoreFoundation.h>
#include <string>

namespace quillmender::doubles {

/// What a framework reference points to. Counts its references; the last one deletes it, so that
/// any later use is an error that the address sanitizer sees.
class Object {
  public:
    enum class Lifetime { counted, constant };

    Object(const char *kind, CFTypeID typeId, Lifetime lifetime = Lifetime::counted);
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;
    virtual ~Object() = default;

    const char *kind() const { return kind_; }
    CFTypeID typeId() const { return typeId_; }

    void retain() const;
    void release() const;

    virtual bool equals(const Object &other) const { return this == &other; }
    virtual CFHashCode hash() const { return typeId_; }

    /// For the log.
    virtual std::string description() const { return kind_; }

  private:
    const char *kind_;
    CFTypeID typeId_;
    Lifetime lifetime_;
    mutable long references_ = 1;
};

/// The object behind a reference of whichever framework type.
inline const Object *objectOf(CFTypeRef ref) {
    return static_cast<const Object *>(ref);
}

/// The reference to hand out for an object.
template <typename Ref> Ref refOf(const Object *object) {
    return static_cast<Ref>(const_cast<void *>(static_cast<const void *>(object)));
}

/// The object of a reference that must be of this class; the real frameworks crash on another.
template <typename Class> const Class *checked(CFTypeRef ref, const char *function) {
    const auto *object = ref ? dynamic_cast<const Class *>(objectOf(ref)) : nullptr;
    if (!object)
        ADD_FAILURE() << function << " was called with "
                      << (ref ? objectOf(ref)->kind() : "a null reference");
    return object;
}

inline std::string describe(CFTypeRef ref) {
    return ref ? objectOf(ref)->description() : "null";
}

} // namespace quillmender::doubles
