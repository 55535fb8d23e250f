#include "providers/GeminiExchange.h"

#include "model/TextRules.h"
#include "providers/Envelope.h"

namespace quillmender {

namespace {

Json part(const QString &text) {
    return Json{{"text", jsonText(text)}};
}

Json encodeRequest(const QString &prompt) {
    return Json{
        {"system_instruction", Json{{"parts", Json::array({part(systemPrompt())})}}},
        {"contents", Json::array({Json{{"role", "user"}, {"parts", Json::array({part(prompt)})}}})},
        {"generationConfig", Json{{"responseMimeType", "text/plain"}}},
    };
}

/// The base URL with the model's method after its path; a query stays behind it. Exactly one slash
/// separates the two.
QUrl generateContentUrl(const QUrl &base, const QString &model) {
    const auto piece =
        toValidUtf8(model + QStringLiteral(":generateContent")).toPercentEncoding("/:@!$&'()*+,;=");
    auto path = base.path(QUrl::FullyEncoded).toUtf8();
    if (path.endsWith('/'))
        path.chop(1);
    path += piece.startsWith('/') ? piece : '/' + piece;
    auto url = base;
    url.setPath(QString::fromUtf8(path), QUrl::StrictMode);
    return url;
}

QString decodeResponse(const Json &body) {
    QString joined;
    const auto *candidates = member::optionalArray(body, "candidates");
    if (candidates == nullptr)
        return joined;
    for (const auto &candidate : *candidates) {
        for (const auto &answerPart : member::array(member::object(candidate, "content"), "parts"))
            joined += member::text(answerPart, "text");
    }
    return joined;
}

} // namespace

QCoro::Task<QString> requestGemini(HttpTransport &transport, QString prompt,
                                   LLMConfiguration configuration) {
    const auto url = generateContentUrl(parseEndpoint(configuration.endpoint), configuration.model);
    auto request = makePost(url, encodeRequest(prompt));
    request.headers.emplaceBack("x-goog-api-key", keyHeader(configuration.apiKey));
    co_return co_await exchangeText(
        transport, std::move(request), std::move(configuration),
        [](const Json &body) { return requireAnswer(decodeResponse(body)); });
}

} // namespace quillmender
