#include "providers/QtHttpTransport.h"

#include "platform/Clock.h"
#include "platform/SignalWait.h"
#include "providers/HttpExchange.h"
#include "providers/SystemProxies.h"
#include "providers/TransportError.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLoggingCategory>

#include <algorithm>

namespace quillmender {

namespace {

// The host alone: path, query and headers may hold a key.
Q_LOGGING_CATEGORY(log, "quillmender.http", QtWarningMsg)

constexpr int mostRedirects = 10;

bool isHttp(const QUrl &url) {
    return url.scheme() == QStringLiteral("http") || url.scheme() == QStringLiteral("https");
}

/// Addresses whose contents would be read without any HTTP.
bool isLocalContent(const QUrl &url) {
    return url.scheme() == QStringLiteral("file") || url.scheme() == QStringLiteral("data") ||
           url.scheme() == QStringLiteral("qrc");
}

/// A line break in a value would let it add headers of its own.
bool isSendable(const std::pair<QByteArray, QByteArray> &header) {
    return std::ranges::none_of(header.second, [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return (value < 0x20 && byte != '\t') || value == 0x7f;
    });
}

/// The first that can be used: a system may name others, for mail and files.
QNetworkProxy firstUsable(const QList<QNetworkProxy> &proxies) {
    const auto found = std::ranges::find_if(proxies, [](const QNetworkProxy &proxy) {
        return proxy.type() == QNetworkProxy::NoProxy || proxy.type() == QNetworkProxy::HttpProxy ||
               proxy.type() == QNetworkProxy::HttpCachingProxy ||
               proxy.type() == QNetworkProxy::Socks5Proxy;
    });
    return found == proxies.end() ? QNetworkProxy(QNetworkProxy::NoProxy) : *found;
}

} // namespace

QtHttpTransport::QtHttpTransport(std::optional<std::chrono::milliseconds> longestTimeout)
    : longestTimeout_(longestTimeout) {}

QtHttpTransport::~QtHttpTransport() {
    Q_EMIT cancelled();
}

QCoro::Task<HttpResponse> QtHttpTransport::send(HttpRequest request) {
    const QDeadlineTimer deadline(
        std::min(request.timeout, longestTimeout_.value_or(request.timeout)));
    for (int redirects = 0;; ++redirects) {
        request.timeout = std::chrono::milliseconds(deadline.remainingTime());
        HttpResponse response = co_await sendOnce(request);
        const bool isFollowed = request.redirects == HttpRequest::Redirects::httpsOnly &&
                                !response.redirectTarget.isEmpty() && redirects < mostRedirects;
        if (!isFollowed)
            co_return response;
        request.url = request.url.resolved(response.redirectTarget);
        if (request.url.scheme() != QStringLiteral("https"))
            co_return response;
    }
}

QCoro::Task<HttpResponse> QtHttpTransport::sendOnce(HttpRequest request) {
    if (isLocalContent(request.url))
        co_return HttpResponse{};
    if (!isHttp(request.url))
        throw TransportError(TransportError::Kind::unsupportedScheme, request.url);
    if (!std::ranges::all_of(request.headers, isSendable))
        throw TransportError(TransportError::Kind::invalidHeader, request.url);

    auto isCancelled = std::make_shared<bool>(false);
    const auto watch =
        connect(this, &QtHttpTransport::cancelled, [isCancelled] { *isCancelled = true; });
    const auto proxies = co_await systemProxies(request.url);
    if (*isCancelled)
        throw CancellationError();
    disconnect(watch);

    HttpExchange exchange(request, firstUsable(proxies));
    connect(this, &QtHttpTransport::cancelled, &exchange, &HttpExchange::cancel);
    QElapsedTimer time;
    time.start();
    if (!exchange.isFinished())
        co_await SignalWait(&exchange, &HttpExchange::finished);
    HttpResponse response = exchange.takeResponse();
    qCInfo(log, "%s %s: %lld bytes, status %d, %lld bytes, %lld ms", request.method.constData(),
           qUtf8Printable(request.url.host()), qint64(request.body.size()),
           response.status.value_or(0), qint64(response.body.size()), time.elapsed());
    co_return response;
}

void QtHttpTransport::cancelAll() {
    Q_EMIT cancelled();
}

} // namespace quillmender
