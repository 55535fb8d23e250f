#pragma once

#include "model/AIProvider.h"
#include "model/Json.h"
#include "providers/HttpTransport.h"

#include <QCoroTask>
#include <QString>

namespace quillmender {

/// What the exchanges with all providers have in common.

/// The instruction that goes with every request.
QString systemPrompt();

/// Throws AppFailure::invalidEndpoint for a text that is no complete address.
QUrl parseEndpoint(const QString &endpoint);

/// A POST of JSON with 120 seconds of time, without any provider's own headers.
HttpRequest makePost(const QUrl &url, const Json &body);

/// A text as the value of a header.
QByteArray headerValue(const QString &text);

/// Sends the request and gives the body of a successful answer as JSON. Throws as LLMClient says.
QCoro::Task<Json> exchangeJson(HttpTransport &transport, HttpRequest request, AIProvider provider);

/// Throws unless the status is from 200 to 299; the message of the failure is the provider's own.
void validateHTTPResponse(const HttpResponse &response, AIProvider provider);

/// The trimmed text. Throws AppFailure::invalidResponse when nothing is left of it.
QString requireAnswer(const QString &text);

} // namespace quillmender
