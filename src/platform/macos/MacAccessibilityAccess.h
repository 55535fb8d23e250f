#pragma once

#include "platform/AccessibilityAccess.h"

namespace quillmender {

/// The user's trust in the system's privacy settings (`AXIsProcessTrusted`).
class MacAccessibilityAccess : public AccessibilityAccess {
  public:
    void ask() override {} ///< it answers without a wait
    bool isGranted() override;
    void request() override;
};

} // namespace quillmender
