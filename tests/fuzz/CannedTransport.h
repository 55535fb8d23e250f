#pragma once

#include "providers/HttpTransport.h"

#include <utility>

namespace quillmender::fuzz {

/// Gives one answer at once, whatever is asked.
class CannedTransport : public HttpTransport {
  public:
    explicit CannedTransport(HttpResponse response) : response_(std::move(response)) {}

    QCoro::Task<HttpResponse> send(HttpRequest request) override {
        Q_UNUSED(request)
        co_return std::as_const(response_);
    }

    void cancelAll() override {}

  private:
    HttpResponse response_;
};

} // namespace quillmender::fuzz
