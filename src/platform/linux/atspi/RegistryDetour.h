#pragma once

#include "platform/linux/KeyDetour.h"
#include "platform/linux/atspi/AtspiBus.h"

namespace quillmender {

/// Qt asks the accessibility registry about every key (`NotifyListenersSync` of
/// `org.a11y.atspi.DeviceEventController`) and acts on it when the answer is there, which a screen
/// reader can delay.
class RegistryDetour : public KeyDetour {
  public:
    /// `service` is the application's name on the bus, which must outlive the object.
    RegistryDetour(AtspiBus &bus, QString service);

    QCoro::Task<bool> isPassed(std::chrono::milliseconds patience) override;

  private:
    AtspiBus &bus_;
    QString service_;
};

} // namespace quillmender
