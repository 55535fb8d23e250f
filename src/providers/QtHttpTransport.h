#pragma once

#include "providers/HttpTransport.h"

#include <QObject>

#include <optional>

namespace quillmender {

/// HTTP/1.1 through the system's proxies, with a connection for each request, so that no answer can
/// reach another one. Certificates are always verified; cookies and credentials are neither kept
/// nor sent; an answer larger than its request allows is an error. Everything happens on the thread
/// that made it.
class QtHttpTransport : public QObject, public HttpTransport {
    Q_OBJECT

  public:
    /// No request takes longer than `longestTimeout`, if there is one, whatever its own says.
    explicit QtHttpTransport(std::optional<std::chrono::milliseconds> longestTimeout = {});

    /// Cancels all requests.
    ~QtHttpTransport() override;

    QCoro::Task<HttpResponse> send(HttpRequest request) override;
    void cancelAll() override;

  Q_SIGNALS:
    void cancelled();

  private:
    QCoro::Task<HttpResponse> sendOnce(HttpRequest request);

    std::optional<std::chrono::milliseconds> longestTimeout_;
};

} // namespace quillmender
