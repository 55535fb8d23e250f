#pragma once

#include "platform/Appearance.h"
#include "platform/linux/services/DrawnSymbols.h"
#include "platform/none/NoneOwnWindows.h"

namespace quillmender {

/// Colours of our choice.
class GalleryAppearance : public Appearance {
  public:
    explicit GalleryAppearance(const DesktopColors &fixed) : fixed_(fixed) {}
    DesktopColors colors() override { return fixed_; }
    void onChange(std::function<void()>) override {}

  private:
    DesktopColors fixed_;
};

} // namespace quillmender
