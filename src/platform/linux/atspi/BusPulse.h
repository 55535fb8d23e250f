#pragma once

#include "platform/linux/ApplicationPulse.h"
#include "platform/linux/KeyRelay.h"
#include "platform/linux/atspi/AtspiBus.h"

#include <memory>

namespace quillmender::atspi {

/// By a question that toolkits answer from the loop that brings them their keys; where these take
/// a way round, by one that comes after them.
class BusPulse : public ApplicationPulse {
  public:
    /// `service` is the application's name on the bus, which must outlive the object.
    BusPulse(AtspiBus &bus, QString service, std::shared_ptr<KeyRelay> relay);

    QCoro::Task<bool> beats(std::chrono::milliseconds limit) override;

  private:
    AtspiBus &bus_;
    QString service_;
    std::shared_ptr<KeyRelay> relay_;
};

} // namespace quillmender::atspi
