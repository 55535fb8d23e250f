#include "app/RunningOperations.h"

#include "platform/SignalWait.h"

#include <QDeadlineTimer>

namespace quillmender {

RunningOperations::Mark RunningOperations::begin() {
    ++count_;
    return Mark(this, End{this});
}

QCoro::Task<> RunningOperations::allEnded(std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit);
    while (count_ > 0 && !deadline.hasExpired())
        co_await SignalWait(this, &RunningOperations::oneEnded,
                            std::chrono::milliseconds(deadline.remainingTime()));
}

void RunningOperations::End::operator()(RunningOperations *) const {
    if (!operations)
        return;
    --operations->count_;
    Q_EMIT operations->oneEnded();
}

} // namespace quillmender
