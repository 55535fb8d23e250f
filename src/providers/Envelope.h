#pragma once

#include "model/Json.h"
#include "model/LLMConfiguration.h"
#include "providers/HttpTransport.h"

#include <QCoroTask>
#include <QString>

#include <functional>

namespace quillmender {

/// What the exchanges with all providers have in common.

/// The instruction that goes with every request.
QString systemPrompt();

/// Throws AppFailure::invalidEndpoint for a text that is no complete address.
QUrl parseEndpoint(const QString &endpoint);

/// A POST of JSON with 120 seconds of time, without any provider's own headers.
HttpRequest makePost(const QUrl &url, const Json &body);

/// A key as the value of a header, behind `prefix`.
QByteArray keyHeader(const QString &key, const char *prefix = "");

/// What makes the answer out of a provider's JSON. It is called on any thread, and throws as
/// LLMClient says.
using AnswerDecoder = std::function<QString(const Json &)>;

/// Sends the request and gives the text that `decode` finds in a successful answer. Throws as
/// LLMClient says.
QCoro::Task<QString> exchangeText(HttpTransport &transport, HttpRequest request,
                                  LLMConfiguration configuration, AnswerDecoder decode);

/// Throws unless the status is from 200 to 299; the message of the failure is the provider's own,
/// as far as it can be shown.
void validateHTTPResponse(const HttpResponse &response, const LLMConfiguration &configuration);

/// The trimmed text. Throws AppFailure::invalidResponse when nothing is left of it.
QString requireAnswer(const QString &text);

} // namespace quillmender
