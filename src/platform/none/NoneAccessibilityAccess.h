#pragma once

#include "platform/AccessibilityAccess.h"

namespace quillmender {

/// Never granted.
class NoneAccessibilityAccess : public AccessibilityAccess {
  public:
    void ask() override {}
    bool isGranted() override { return false; }
    void request() override {}
};

} // namespace quillmender
