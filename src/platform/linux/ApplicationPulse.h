#pragma once

#include <QCoroTask>

#include <chrono>

namespace quillmender {

/// Asks an application whether it attends to its events, where it handles its keys.
class ApplicationPulse {
  public:
    ApplicationPulse() = default;
    ApplicationPulse(const ApplicationPulse &) = delete;
    ApplicationPulse &operator=(const ApplicationPulse &) = delete;
    virtual ~ApplicationPulse() = default;

    /// False when it has not answered within `limit`, 250 ms at least and five seconds at most.
    /// True also when it has gone, or cannot be asked any more.
    virtual QCoro::Task<bool> beats(std::chrono::milliseconds limit) = 0;
};

} // namespace quillmender
