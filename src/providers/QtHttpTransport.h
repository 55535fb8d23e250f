#pragma once

#include "providers/HttpTransport.h"

#include <QNetworkAccessManager>
#include <QObject>

#include <memory>
#include <optional>

namespace quillmender {

/// HTTP/1.1 over connections that are kept for a while, through the system's proxies. Certificates
/// are always verified; cookies and credentials are neither kept nor sent; an answer
/// larger than its request allows is an error. Everything happens on the thread that made it.
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
    QNetworkReply *start(const HttpRequest &request, const QList<QNetworkProxy> &proxies);
    QNetworkAccessManager &manager();

    std::optional<std::chrono::milliseconds> longestTimeout_;
    /// Made with the first request: a program that has sent none pays for none.
    std::unique_ptr<QNetworkAccessManager> manager_;
};

} // namespace quillmender
