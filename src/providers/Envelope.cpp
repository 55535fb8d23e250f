#include "providers/Envelope.h"

#include "model/AppFailure.h"
#include "model/DecodingError.h"
#include "model/TextRules.h"

#include <QStringDecoder>
#include <QUtf8StringView>

namespace quillmender {

namespace {

constexpr std::chrono::seconds defaultTimeout{60};
constexpr std::chrono::seconds requestTimeout{120};

QString fallbackMessage(AIProvider provider) {
    switch (provider) {
    case AIProvider::openAI:
        return QStringLiteral("Unknown OpenAI error.");
    case AIProvider::anthropic:
        return QStringLiteral("Unknown Anthropic error.");
    case AIProvider::gemini:
        return QStringLiteral("Unknown Gemini error.");
    }
    return {};
}

QString errorMessage(const QByteArray &body, AIProvider provider) {
    try {
        return member::text(member::object(decodeJson(body), "error"), "message");
    } catch (const DecodingError &) {
        if (!QUtf8StringView(body).isValidUtf8())
            return fallbackMessage(provider);
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
        return decoder.decode(body);
    }
}

} // namespace

QString systemPrompt() {
    return QStringLiteral("You are a text transformation assistant.\n"
                          "Preserve the user's intended meaning.\n"
                          "Do not explain your work.\n"
                          "Do not wrap the result in quotes.\n"
                          "Return only the transformed text.");
}

QUrl parseEndpoint(const QString &endpoint) {
    const QUrl url(endpoint, QUrl::TolerantMode);
    const auto needsHost =
        url.scheme() == QStringLiteral("http") || url.scheme() == QStringLiteral("https");
    if (!url.isValid() || url.isRelative() || (needsHost && url.host().isEmpty()))
        throw AppFailure::invalidEndpoint();
    return url;
}

HttpRequest makePost(const QUrl &url, const Json &body) {
    HttpRequest request(url, defaultTimeout);
    request.method = "POST";
    request.timeout = requestTimeout;
    request.headers.emplaceBack("Content-Type", "application/json");
    request.body = encodeJson(body);
    return request;
}

QByteArray headerValue(const QString &text) {
    return toValidUtf8(text);
}

QCoro::Task<Json> exchangeJson(HttpTransport &transport, HttpRequest request, AIProvider provider) {
    const auto response = co_await transport.send(std::move(request));
    validateHTTPResponse(response, provider);
    co_return decodeJson(response.body);
}

void validateHTTPResponse(const HttpResponse &response, AIProvider provider) {
    if (!response.status)
        throw AppFailure::invalidResponse();
    if (*response.status < 200 || *response.status > 299)
        throw AppFailure::openAIError(errorMessage(response.body, provider));
}

QString requireAnswer(const QString &text) {
    const auto answer = trimmed(text);
    if (answer.isEmpty())
        throw AppFailure::invalidResponse();
    return answer;
}

} // namespace quillmender
