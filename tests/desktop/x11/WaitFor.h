#pragma once

#include <QCoreApplication>
#include <QCoroTask>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace quillmender::x11 {

/// Runs the event loop until the condition holds. False when it does not within the limit.
inline bool waitFor(const std::function<bool()> &condition,
                    std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    const QDeadlineTimer deadline(limit);
    QTimer wake;
    wake.start(5);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Runs the event loop once around: everything queued so far has happened then.
inline void finishTurn() {
    bool isDone = false;
    QTimer::singleShot(0, [&isDone] { isDone = true; });
    waitFor([&] { return isDone; });
}

} // namespace quillmender::x11
