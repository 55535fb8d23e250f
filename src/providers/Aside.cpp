#include "providers/Aside.h"

#include "platform/SignalWait.h"

#include <QFutureWatcher>
#include <QPromise>

#include <thread>

namespace quillmender {

QCoro::Task<QString> aside(std::function<QString()> work) {
    QPromise<QString> promise;
    QFutureWatcher<QString> watcher;
    watcher.setFuture(promise.future());
    std::thread([promise = std::move(promise), work = std::move(work)]() mutable {
        promise.start();
        try {
            promise.addResult(work());
        } catch (...) {
            promise.setException(std::current_exception());
        }
        work = nullptr;
        promise.finish();
    }).detach();
    co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
    co_return watcher.result();
}

} // namespace quillmender
