#include "providers/Aside.h"

#include "platform/SignalWait.h"

#include <QFutureWatcher>
#include <QPromise>

#include <exception>
#include <memory>
#include <thread>

namespace quillmender {

QCoro::Task<QString> aside(std::function<QString()> work) {
    struct Outcome {
        QString text;
        std::exception_ptr error;
    };
    const auto outcome = std::make_shared<Outcome>();
    QPromise<void> promise;
    QFutureWatcher<void> watcher;
    watcher.setFuture(promise.future());
    std::thread([outcome, promise = std::move(promise), work = std::move(work)]() mutable {
        promise.start();
        try {
            outcome->text = work();
        } catch (...) {
            outcome->error = std::current_exception();
        }
        work = nullptr;
        promise.finish();
    }).detach();
    co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
    if (outcome->error)
        std::rethrow_exception(outcome->error);
    co_return outcome->text;
}

} // namespace quillmender
