#pragma once

#include "model/Wiping.h"

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
#include <utility>

namespace quillmender {

/// One HTTP request. Its headers are sent in their order, after the host and before the rest of
/// those of the protocol itself. They may hold a secret, and are overwritten with the last copy.
struct HttpRequest {
    /// What happens at a redirect: it is the answer, or it is followed, provided that it leads to
    /// https. Only a request that holds no secret may be redirected.
    enum class Redirects { none, httpsOnly };

    static constexpr qsizetype usualLargestAnswer = qsizetype{16} * 1024 * 1024;

    explicit HttpRequest(const QUrl &requestUrl,
                         std::chrono::milliseconds wholeTimeout = std::chrono::seconds(60))
        : url(requestUrl),
          timeout(wholeTimeout) {}
    HttpRequest(const HttpRequest &) = default;
    HttpRequest(HttpRequest &&) = default;
    HttpRequest &operator=(const HttpRequest &) = default;
    HttpRequest &operator=(HttpRequest &&) = default;
    ~HttpRequest() {
        if (!headers.isDetached())
            return;
        for (auto &header : headers)
            wipe(header.second);
    }

    QByteArray method = "GET";
    QUrl url;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    std::chrono::milliseconds timeout; ///< from sending to the last byte of the answer
    Redirects redirects = Redirects::none;
    qsizetype largestAnswer = usualLargestAnswer; ///< in bytes of the body
};

} // namespace quillmender
