#include "providers/Envelope.h"

#include "model/AppFailure.h"
#include "model/DecodingError.h"
#include "model/TextRules.h"
#include "model/Wiping.h"
#include "providers/Aside.h"
#include "providers/ErrorText.h"

#include <QStringDecoder>
#include <QUtf8StringView>

namespace quillmender {

namespace {

constexpr std::chrono::seconds defaultTimeout{60};
constexpr std::chrono::seconds requestTimeout{120};

/// Reading more than this could be felt on the thread of the windows.
constexpr qsizetype largestReadAtOnce = qsizetype{256} * 1024;

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

/// A NUL ends a text early in many programs that it could be written into.
void requireWritable(const QString &text) {
    if (text.contains(QChar::Null))
        throw DecodingError(
            QStringLiteral("The data could not be read: the text holds a NUL character."));
}

QString readText(const HttpResponse &response, const LLMConfiguration &configuration,
                 const AnswerDecoder &decode) {
    validateHTTPResponse(response, configuration);
    const QString text = decode(decodeJson(response.body));
    requireWritable(text);
    return text;
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

QByteArray keyHeader(const QString &key, const char *prefix) {
    QByteArray value = toValidUtf8(key);
    if (*prefix == '\0')
        return value;
    const QByteArrayView start(prefix);
    QByteArray header;
    header.reserve(start.size() + value.size());
    header.append(start).append(value);
    wipe(value);
    return header;
}

QCoro::Task<QString> exchangeText(HttpTransport &transport, HttpRequest request,
                                  LLMConfiguration configuration, AnswerDecoder decode) {
    auto response = co_await transport.send(std::move(request));
    const bool isLarge = response.body.size() > largestReadAtOnce;
    auto read = [response = std::move(response), configuration = std::move(configuration),
                 decode = std::move(decode)] { return readText(response, configuration, decode); };
    if (!isLarge)
        co_return read();
    co_return co_await aside(std::move(read));
}

void validateHTTPResponse(const HttpResponse &response, const LLMConfiguration &configuration) {
    if (!response.status)
        throw AppFailure::invalidResponse();
    if (*response.status < 200 || *response.status > 299)
        throw AppFailure::openAIError(
            errorText(errorMessage(response.body, configuration.provider), configuration.apiKey));
}

QString requireAnswer(const QString &text) {
    const auto answer = trimmed(text);
    if (answer.isEmpty())
        throw AppFailure::invalidResponse();
    return answer;
}

} // namespace quillmender
