#include "app/RunningOperations.h"

#include "platform/SignalWait.h"

#include <QDeadlineTimer>

namespace quillmender {

Lease RunningOperations::begin() {
    ++count_;
    return Lease(this, [this] {
        --count_;
        Q_EMIT oneEnded();
    });
}

QCoro::Task<> RunningOperations::allEnded(std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit);
    while (count_ > 0 && !deadline.hasExpired())
        co_await SignalWait(this, &RunningOperations::oneEnded,
                            std::chrono::milliseconds(deadline.remainingTime()));
}

} // namespace quillmender
