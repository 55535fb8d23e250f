#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <coroutine>
#include <memory>

namespace quillmender {

/// What a SignalWait hears with. It lives as long as the wait and a resumption under way, and no
/// longer: nothing that is still in the event queue finds a waiter that has gone.
class SignalRelay : public QObject, public std::enable_shared_from_this<SignalRelay> {
  public:
    /// Ends by itself after `limit`, when that is not negative.
    SignalRelay(const QObject *emitter, std::chrono::milliseconds limit);

    /// To be called for each emission.
    void receive();

    bool isOver() const { return isOver_; }
    bool hasReceived() const { return hasReceived_; }
    bool isEmitterGone() const { return isEmitterGone_; }

    /// Resumes once, from the event loop, as soon as the wait is over.
    void resumeWhenOver(std::coroutine_handle<> waiter) { waiter_ = waiter; }

  private:
    void loseEmitter();
    void finish();
    void resume();

    QTimer limit_;
    std::coroutine_handle<> waiter_;
    bool isOver_ = false;
    bool hasReceived_ = false;
    bool isEmitterGone_ = false;
};

} // namespace quillmender
