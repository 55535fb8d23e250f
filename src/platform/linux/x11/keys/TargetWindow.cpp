#include "platform/linux/x11/keys/TargetWindow.h"

#include "platform/SignalWait.h"
#include "platform/linux/x11/windows/ActiveWindow.h"
#include "platform/linux/x11/windows/WindowOwnership.h"
#include "platform/linux/x11/windows/WindowPing.h"

#include <QDeadlineTimer>

namespace quillmender::x11 {

using namespace std::chrono_literals;

QString TargetWindow::name() const {
    return QStringLiteral("window 0x%1").arg(id(), 0, 16);
}

QCoro::Task<Obstacle> TargetWindow::reach(std::chrono::milliseconds patience) const {
    const bool isInFront = co_await comesToTheFront(patience);
    if (!isInFront)
        co_return name() + QStringLiteral(" did not come to the front");
    // One that hangs would copy or paste whenever it comes round, long after everything is over.
    const bool waitForAttention = co_await around_.ping.waitForAttention(id(), patience);
    if (!waitForAttention)
        co_return name() + QStringLiteral(" does not attend to its events");
    co_return std::nullopt;
}

Obstacle TargetWindow::keepsKeysAway() const {
    if (!around_.activeWindow.isInFront(id()))
        return name() + QStringLiteral(" is not in front any more");
    if (!isStillItself(around_.connection, *application_))
        return name() + QStringLiteral(" is another application's by now");
    return std::nullopt;
}

QCoro::Task<bool> TargetWindow::comesToTheFront(std::chrono::milliseconds limit) const {
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    while (!around_.activeWindow.isInFront(id())) {
        if (deadline.hasExpired())
            co_return false;
        // The focus may follow the window manager's announcement, which is all that is reported.
        co_await SignalWait(&around_.activeWindow, &ActiveWindow::changed, 10ms);
    }
    co_return true;
}

} // namespace quillmender::x11
