#pragma once

#include "platform/Appearance.h"

namespace quillmender {

/// A desktop without colours of its own.
class NoneAppearance : public Appearance {
  public:
    DesktopColors colors() override { return {}; }
    void onChange(std::function<void()>) override {}
};

} // namespace quillmender
