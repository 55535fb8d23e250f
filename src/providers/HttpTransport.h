#pragma once

#include "providers/HttpRequest.h"
#include "providers/HttpResponse.h"

#include <QCoroTask>

namespace quillmender {

/// Carries out HTTP requests, any number at once.
class HttpTransport {
  public:
    HttpTransport() = default;
    HttpTransport(const HttpTransport &) = delete;
    HttpTransport &operator=(const HttpTransport &) = delete;
    virtual ~HttpTransport() = default;

    /// Sends the request once: nothing is repeated, and no redirect followed that the request
    /// does not allow. Every status is an answer. Throws TransportError when there is none,
    /// CancellationError when cancelled.
    virtual QCoro::Task<HttpResponse> send(HttpRequest request) = 0;

    /// Ends every request under way with CancellationError.
    virtual void cancelAll() = 0;
};

} // namespace quillmender
