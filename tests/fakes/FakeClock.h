#pragma once

#include "fakes/CallLog.h"
#include "platform/Clock.h"
#include "platform/SignalWait.h"

#include <QCoroTask>
#include <QFutureWatcher>
#include <QPromise>

#include <functional>
#include <memory>
#include <utility>

namespace quillmender::fakes {

/// Sleeps take no time unless the clock is held; each is recorded and can do something meanwhile,
/// or be cancelled.
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
        if (gate_) {
            QFutureWatcher<bool> watcher;
            watcher.setFuture(gate_->future());
            co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
            if (!watcher.result())
                throw CancellationError();
        }
    }

    /// Ends the sleeps that a held clock has under way, and holds it no longer.
    void cancelAll() override {
        log_->append(QStringLiteral("cancelAll"));
        endHeld(false);
    }

    /// From now on sleeps end at `release()`, or are cancelled by `cancelAll()`.
    void hold() {
        gate_ = std::make_shared<QPromise<bool>>();
        gate_->start();
    }
    void release() { endHeld(true); }

    int sleeps = 0;
    int cancelledSleep = 0; ///< the number of the sleep that is cancelled, counted from 1
    std::function<void(int)> duringSleep;

  private:
    void endHeld(bool isSleptOut) {
        if (const auto gate = std::exchange(gate_, nullptr)) {
            gate->addResult(isSleptOut);
            gate->finish();
        }
    }

    CallLog log_;
    std::shared_ptr<QPromise<bool>> gate_;
};

} // namespace quillmender::fakes
