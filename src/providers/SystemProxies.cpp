#include "providers/SystemProxies.h"

#include "platform/SignalWait.h"
#include "providers/ThisMachine.h"

#include <QFutureWatcher>
#include <QNetworkProxyFactory>
#include <QPromise>

#include <thread>

namespace quillmender {

namespace {

constexpr std::chrono::milliseconds longestWait{5000};

} // namespace

QCoro::Task<QList<QNetworkProxy>> systemProxies(QUrl url) {
    const QList<QNetworkProxy> direct{QNetworkProxy(QNetworkProxy::NoProxy)};
    if (isThisMachine(url.host()))
        co_return direct;

    QPromise<QList<QNetworkProxy>> promise;
    QFutureWatcher<QList<QNetworkProxy>> watcher;
    watcher.setFuture(promise.future());
    std::thread([url, promise = std::move(promise)]() mutable {
        promise.start();
        promise.addResult(QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url)));
        promise.finish();
    }).detach();
    co_await SignalWait(&watcher, &QFutureWatcherBase::finished, longestWait);
    if (!watcher.isFinished())
        co_return direct;
    co_return watcher.result();
}

} // namespace quillmender
