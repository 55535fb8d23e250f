#pragma once

#include "platform/AccessibilityAccess.h"

namespace quillmender {

/// The user's trust in the system's privacy settings (`AXIsProcessTrusted`).
class MacAccessibilityAccess : public AccessibilityAccess {
  public:
    bool isGranted() override;
    void request() override;
};

} // namespace quillmender
