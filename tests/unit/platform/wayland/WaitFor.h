#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

namespace quillmender::wayland {

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

} // namespace quillmender::wayland
