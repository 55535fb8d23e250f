#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
#include <utility>

namespace quillmender {

/// One HTTP request. Its headers are sent in their order, before those of the protocol itself.
struct HttpRequest {
    /// What happens at a redirect: it is the answer, or it is followed, provided that it leads to
    /// https. Only a request that holds no secret may be redirected.
    enum class Redirects { none, httpsOnly };

    static constexpr qsizetype usualLargestAnswer = qsizetype{64} * 1024 * 1024;

    explicit HttpRequest(const QUrl &requestUrl,
                         std::chrono::milliseconds wholeTimeout = std::chrono::seconds(60))
        : url(requestUrl),
          timeout(wholeTimeout) {}

    QByteArray method = "GET";
    QUrl url;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    std::chrono::milliseconds timeout; ///< from sending to the last byte of the answer
    Redirects redirects = Redirects::none;
    qsizetype largestAnswer = usualLargestAnswer; ///< in bytes of the body
};

} // namespace quillmender
