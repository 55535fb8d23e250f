#pragma once

#include "platform/Appearance.h"

namespace quillmender::fakes {

/// A light desktop whose colours the test changes.
class FakeAppearance : public Appearance {
  public:
    DesktopColors colors() override { return current; }
    void onChange(std::function<void()> listener) override { listener_ = std::move(listener); }

    void become(const DesktopColors &colors) {
        current = colors;
        listener_();
    }

    DesktopColors current{ColorScheme::light, std::nullopt};

  private:
    std::function<void()> listener_;
};

} // namespace quillmender::fakes
