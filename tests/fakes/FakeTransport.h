#pragma once

#include "fakes/CallLog.h"
#include "model/UserVisibleError.h"
#include "platform/SignalWait.h"
#include "providers/HttpTransport.h"

#include <QObject>

#include <optional>
#include <utility>

namespace quillmender::fakes {

class FakeTransportError : public UserVisibleError {
  public:
    explicit FakeTransportError(const QString &description) : UserVisibleError(description) {}
};

/// Keeps every request until the test answers it; each answer goes to all requests under way.
class FakeTransport : public QObject, public HttpTransport {
    Q_OBJECT

  public:
    explicit FakeTransport(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<HttpResponse> send(HttpRequest request) override {
        log_->append(QStringLiteral("send"));
        requests.append(request);
        co_await SignalWait(this, &FakeTransport::answered);
        if (error_)
            throw FakeTransportError(*error_);
        co_return std::as_const(response_);
    }
    void cancelAll() override { log_->append(QStringLiteral("transport.cancelAll")); }

    void answer(std::optional<int> status, const QByteArray &body) {
        error_.reset();
        response_.status = status;
        response_.body = body;
        Q_EMIT answered();
    }
    void answerText(const QByteArray &text) { answer(200, R"({"output_text":")" + text + R"("})"); }
    void fail(const QString &description) {
        error_ = description;
        Q_EMIT answered();
    }

    QList<HttpRequest> requests;

  Q_SIGNALS:
    void answered();

  private:
    CallLog log_;
    HttpResponse response_;
    std::optional<QString> error_;
};

} // namespace quillmender::fakes
