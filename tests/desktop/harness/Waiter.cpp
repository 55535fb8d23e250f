#include "desktop/harness/Waiter.h"

#include "desktop/harness/HarnessError.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace quillmender::harness {

namespace {

constexpr std::chrono::milliseconds pollInterval{5};

std::function<void()> &timeoutObserver() {
    static std::function<void()> observer;
    return observer;
}

} // namespace

bool becomesTrue(const std::function<bool()> &condition, std::chrono::milliseconds deadline) {
    QElapsedTimer elapsed;
    elapsed.start();
    // Whatever the condition looks at may live in another process, which sends no event here.
    QTimer poll;
    poll.start(pollInterval);
    QEventLoop loop;
    while (!condition()) {
        if (elapsed.hasExpired(deadline.count()))
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void waitUntil(const std::function<bool()> &condition, const QString &what,
               std::chrono::milliseconds deadline) {
    if (becomesTrue(condition, deadline))
        return;
    if (timeoutObserver())
        timeoutObserver()();
    throw HarnessError(QStringLiteral("not within %1 ms: %2").arg(deadline.count()).arg(what));
}

void setTimeoutObserver(std::function<void()> observer) {
    timeoutObserver() = std::move(observer);
}

} // namespace quillmender::harness
