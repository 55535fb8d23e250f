#include "platform/SignalRelay.h"

#include <QAbstractEventDispatcher>

#include <utility>

namespace quillmender {

SignalRelay::SignalRelay(const QObject *emitter, std::chrono::milliseconds limit) {
    if (!emitter) {
        loseEmitter();
        return;
    }
    connect(emitter, &QObject::destroyed, this, &SignalRelay::loseEmitter);
    if (limit.count() < 0)
        return;
    limit_.setSingleShot(true);
    limit_.setTimerType(Qt::PreciseTimer);
    connect(&limit_, &QTimer::timeout, this, &SignalRelay::finish);
    limit_.start(limit);
}

void SignalRelay::receive() {
    hasReceived_ = true;
    finish();
}

void SignalRelay::loseEmitter() {
    isEmitterGone_ = true;
    finish();
}

void SignalRelay::finish() {
    if (std::exchange(isOver_, true))
        return;
    limit_.stop();
    // The dispatcher carries the call and not this object, which the resumed code destroys.
    QMetaObject::invokeMethod(
        QAbstractEventDispatcher::instance(thread()),
        [weak = weak_from_this()] {
            if (const auto relay = weak.lock())
                relay->resume();
        },
        Qt::QueuedConnection);
}

void SignalRelay::resume() {
    if (const auto waiter = std::exchange(waiter_, nullptr))
        waiter.resume();
}

} // namespace quillmender
