#include "app/RunningOperations.h"

#include <QCoroSignal>
#include <QDeadlineTimer>

namespace quillmender {

RunningOperations::Mark RunningOperations::begin() {
    ++count_;
    return Mark(this);
}

QCoro::Task<> RunningOperations::allEnded(std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit);
    while (count_ > 0 && !deadline.hasExpired())
        co_await qCoro(this, &RunningOperations::oneEnded,
                       std::chrono::milliseconds(deadline.remainingTime()));
}

void RunningOperations::End::operator()(RunningOperations *operations) const {
    --operations->count_;
    Q_EMIT operations->oneEnded();
}

} // namespace quillmender
