#pragma once

#include "platform/OwnWindows.h"

namespace quillmender {

/// Windows stand as the toolkit shows them.
class NoneOwnWindows : public OwnWindows {
  public:
    void setAccessoryPolicy() override {}
    void applyPanelAttributes(QWindow *) override {}
    void applyWindowAttributes(QWindow *) override {}
    void activate(QWindow *) override {}
    std::unique_ptr<SteppedAside> stepAside(QWindow *) override { return nullptr; }
};

} // namespace quillmender
