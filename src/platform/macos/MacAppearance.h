#pragma once

#include "platform/Appearance.h"
#include "platform/macos/AppearanceObserver.h"
#include "platform/macos/ObjcRef.h"

namespace quillmender {

/// The colour scheme that the application has now, and the accent colour in sRGB.
class MacAppearance : public Appearance {
  public:
    MacAppearance();
    ~MacAppearance() override;

    DesktopColors colors() override;
    void onChange(std::function<void()> listener) override;

  private:
    std::function<void()> listener_;
    ObjcRef<QuillmenderAppearanceObserver> observer_;
};

} // namespace quillmender
