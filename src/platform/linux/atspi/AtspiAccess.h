#pragma once

#include "platform/AccessibilityAccess.h"
#include "platform/linux/atspi/AtspiBus.h"

#include <chrono>

namespace quillmender::atspi {

/// Granted means that the desktop's accessibility is switched on (`org.a11y.Status`) and the
/// accessibility bus answers. To request it is to switch it on.
class AtspiAccess : public AccessibilityAccess {
  public:
    /// How long an answer is waited for, from when it is asked for.
    static constexpr std::chrono::milliseconds patience{250};

    /// The bus must outlive the object.
    explicit AtspiAccess(AtspiBus &bus) : bus_(bus) {}

    void ask() override;
    bool isGranted() override;
    void request() override;

  private:
    AtspiBus &bus_;
};

} // namespace quillmender::atspi
