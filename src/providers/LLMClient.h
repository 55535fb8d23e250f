#pragma once

#include "model/LLMConfiguration.h"
#include "providers/HttpTransport.h"

#include <QCoroTask>
#include <QString>

namespace quillmender {

/// Turns one prompt into one answer of a provider, with one HTTP request. Holds no state of its
/// own; the transport must outlive it and its requests.
///
/// Every operation gives the trimmed answer, which is never empty, or throws: AppFailure
/// (`missingAPIKey`, `invalidEndpoint`: nothing was sent; `openAIError`: the provider's own words;
/// `invalidResponse`), TransportError, DecodingError for an answer that is not the provider's
/// JSON, or CancellationError.
class LLMClient {
  public:
    explicit LLMClient(HttpTransport &transport) : transport_(&transport) {}

    /// Sends the prompt as it is.
    QCoro::Task<QString> transform(QString prompt, LLMConfiguration configuration) const;

    /// Has a text written from the source text, after a free instruction of the user.
    QCoro::Task<QString> generate(QString from, QString instruction,
                                  LLMConfiguration configuration) const;

  private:
    QCoro::Task<QString> request(QString prompt, LLMConfiguration configuration) const;

    HttpTransport *transport_;
};

} // namespace quillmender
