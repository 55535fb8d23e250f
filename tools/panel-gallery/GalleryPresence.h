#pragma once

#include "platform/linux/services/LinuxPresence.h"

namespace quillmender {

/// The desktop's presence, but in colours of our choice.
class GalleryPresence : public LinuxPresence {
  public:
    explicit GalleryPresence(const Appearance &fixed) : LinuxPresence(nullptr), fixed_(fixed) {}
    Appearance appearance() override { return fixed_; }

  private:
    Appearance fixed_;
};

} // namespace quillmender
