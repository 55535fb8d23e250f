#pragma once

#include "fakes/CallLog.h"
#include "platform/Clock.h"

#include <functional>

namespace quillmender::fakes {

/// Sleeps take no time; each is recorded and can do something meanwhile, or be cancelled.
class FakeClock : public Clock {
  public:
    explicit FakeClock(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<> sleepFor(std::chrono::milliseconds duration) override {
        log_->append(QStringLiteral("sleep %1").arg(duration.count()));
        ++sleeps;
        if (duringSleep)
            duringSleep(sleeps);
        if (sleeps == cancelledSleep)
            throw CancellationError();
        co_return;
    }
    void cancelAll() override { log_->append(QStringLiteral("cancelAll")); }

    int sleeps = 0;
    int cancelledSleep = 0; ///< the number of the sleep that is cancelled, counted from 1
    std::function<void(int)> duringSleep;

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
