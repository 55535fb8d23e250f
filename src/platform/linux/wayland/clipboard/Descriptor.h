#pragma once

#include <unistd.h>
#include <utility>

namespace quillmender::wayland {

/// An open file, closed by its one owner.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { close(); }

    bool isOpen() const { return number_ >= 0; }
    int get() const { return number_; }

    void close() {
        if (isOpen())
            ::close(std::exchange(number_, -1));
    }

  private:
    int number_;
};

} // namespace quillmender::wayland
