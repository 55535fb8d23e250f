#pragma once

#include "platform/linux/FrontmostSource.h"

namespace quillmender {

/// A window system that tells nothing of the application in front.
class NoFrontmostSource : public FrontmostSource {
  public:
    RunningApplicationRef application() const override { return nullptr; }
    bool isTerminal() const override { return false; }
    QCoro::Task<std::optional<QString>> primarySelection() override { co_return std::nullopt; }
};

} // namespace quillmender
