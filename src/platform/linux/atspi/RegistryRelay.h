#pragma once

#include "platform/linux/KeyRelay.h"
#include "platform/linux/atspi/AtspiBus.h"

namespace quillmender::atspi {

/// Qt asks the accessibility registry about every key (`NotifyListenersSync` of
/// `org.a11y.atspi.DeviceEventController`) and acts on it when the answer is there, which a screen
/// reader can delay.
class RegistryRelay : public KeyRelay {
  public:
    /// `service` is the application's name on the bus, which must outlive the object.
    RegistryRelay(AtspiBus &bus, QString service);

    QCoro::Task<bool> waitUntilPassed(std::chrono::milliseconds patience) override;

  private:
    AtspiBus &bus_;
    QString service_;
};

} // namespace quillmender::atspi
