#include "platform/QtClock.h"

#include <QCoroTimer>
#include <QTimer>

namespace quillmender {

QCoro::Task<> QtClock::sleepFor(std::chrono::milliseconds duration) {
    if (!isCancelled_) {
        QTimer timer;
        timer.setTimerType(Qt::PreciseTimer);
        timer.setSingleShot(true);
        connect(this, &QtClock::cancelled, &timer, [&timer] { timer.start(0); });
        timer.start(duration);
        co_await timer;
    }
    if (isCancelled_)
        throw CancellationError();
}

void QtClock::cancelAll() {
    isCancelled_ = true;
    Q_EMIT cancelled();
}

} // namespace quillmender
