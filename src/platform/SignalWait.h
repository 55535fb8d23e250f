#pragma once

#include "platform/SignalRelay.h"

namespace quillmender {

/// One wait for one emission of a signal, which may be shared, repeated, or come together with its
/// limit: the coroutine goes on exactly once, from the event loop. It may be destroyed while it
/// waits.
///
///     const bool came = co_await SignalWait(&window, &ActiveWindow::changed, 10ms);
///
/// Counts from its construction. The result is whether the signal came; without a limit it always
/// did. Throws CancellationError when the emitter has gone: where that is the coroutine's own
/// object, nothing of it may be touched any more. Copies, which compilers make, are the same wait.
class SignalWait {
  public:
    static constexpr std::chrono::milliseconds noLimit{-1};

    template <typename Emitter, typename Signal>
    SignalWait(const Emitter *emitter, Signal signal, std::chrono::milliseconds limit = noLimit)
        : relay_(std::make_shared<SignalRelay>(emitter, limit)) {
        if (emitter)
            QObject::connect(emitter, signal, relay_.get(), &SignalRelay::receive);
    }

    bool await_ready() const { return relay_->isOver(); }
    void await_suspend(std::coroutine_handle<> waiter) { relay_->resumeWhenOver(waiter); }
    bool await_resume() const;

  private:
    std::shared_ptr<SignalRelay> relay_;
};

} // namespace quillmender
