#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <utility>

namespace quillmender {

/// Owns one reference of a Core Foundation object, or of another that CFRelease takes. `Ref` is
/// the pointer type, such as CFStringRef.
template <typename Ref> class CFRef {
  public:
    CFRef() = default;
    CFRef(const CFRef &) = delete;
    CFRef &operator=(const CFRef &) = delete;
    CFRef(CFRef &&other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
    CFRef &operator=(CFRef &&other) noexcept {
        std::swap(ref_, other.ref_);
        return *this;
    }
    ~CFRef() {
        if (ref_)
            CFRelease(ref_);
    }

    /// Takes over the reference that a function named Create or Copy has made. Null stays null.
    [[nodiscard]] static CFRef adopted(Ref ref) { return CFRef(ref); }

    /// Adds a reference of its own to what somebody else owns. Null stays null.
    [[nodiscard]] static CFRef retained(Ref ref) {
        if (ref)
            CFRetain(ref);
        return CFRef(ref);
    }

    /// Null when it holds nothing.
    Ref get() const { return ref_; }

    /// Leaves the reference to the caller.
    [[nodiscard]] Ref release() { return std::exchange(ref_, nullptr); }

    explicit operator bool() const { return ref_ != nullptr; }

  private:
    explicit CFRef(Ref ref) : ref_(ref) {}

    Ref ref_ = nullptr;
};

} // namespace quillmender
