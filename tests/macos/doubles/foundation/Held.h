#pragma once

#import <Foundation/Foundation.h>
#include <utility>

namespace quillmender::doubles {

/// A strong reference of the doubles' own.
template <typename Object> class Held {
  public:
    Held() = default;
    explicit Held(Object *object) : object_([object retain]) {}
    Held(const Held &other) : Held(other.object_) {}
    Held &operator=(Held other) {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Held() { [object_ release]; }

    Object *get() const { return object_; }

  private:
    Object *object_ = nil;
};

} // namespace quillmender::doubles
