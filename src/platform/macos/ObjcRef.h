#pragma once

#include <utility>

namespace quillmender {

/// One counted reference to an Objective-C object, given back when this one goes. May be empty.
template <typename Object> class ObjcRef {
  public:
    ObjcRef() = default;

    /// Takes over a reference that the caller already has: of what `alloc`, `new` or `copy` gave.
    [[nodiscard]] static ObjcRef adopted(Object *object) { return ObjcRef(object); }

    /// Adds a reference to an object that somebody else owns.
    [[nodiscard]] static ObjcRef retained(Object *object) { return ObjcRef([object retain]); }

    ObjcRef(const ObjcRef &other) : object_([other.object_ retain]) {}
    ObjcRef(ObjcRef &&other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ObjcRef &operator=(ObjcRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ObjcRef() { [object_ release]; }

    Object *get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

  private:
    explicit ObjcRef(Object *object) : object_(object) {}

    Object *object_ = nullptr;
};

} // namespace quillmender
