#pragma once

#include "platform/linux/ApplicationPulse.h"
#include "platform/linux/atspi/AtspiBus.h"

namespace quillmender::atspi {

/// By a question that toolkits answer from the loop that brings them their keys.
class BusPulse : public ApplicationPulse {
  public:
    /// `service` is the application's name on the bus, which must outlive the object.
    BusPulse(AtspiBus &bus, QString service);

    QCoro::Task<bool> beats(std::chrono::milliseconds limit) override;

  private:
    AtspiBus &bus_;
    QString service_;
};

} // namespace quillmender::atspi
