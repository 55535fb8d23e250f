#include "providers/OpenAIExchange.h"

#include "model/AppFailure.h"
#include "model/TextRules.h"
#include "providers/Envelope.h"

#include <QList>

namespace quillmender {

namespace {

struct OutputContent {
    QString type;
    std::optional<QString> text;
};

struct OpenAIResponse {
    std::optional<QString> outputText;
    QList<OutputContent> output; ///< the contents of all items, in order
};

Json inputMessage(const char *role, const QString &text) {
    return Json{
        {"role", role},
        {"content", Json::array({Json{{"type", "input_text"}, {"text", jsonText(text)}}})},
    };
}

Json encodeRequest(const QString &prompt, const QString &model) {
    return Json{
        {"model", jsonText(model)},
        {"store", false},
        {"text", Json{{"format", Json{{"type", "text"}}}}},
        {"input",
         Json::array({inputMessage("developer", systemPrompt()), inputMessage("user", prompt)})},
    };
}

OpenAIResponse decodeResponse(const Json &body) {
    OpenAIResponse response{member::optionalText(body, "output_text"), {}};
    const auto *items = member::optionalArray(body, "output");
    if (items == nullptr)
        return response;
    for (const auto &item : *items) {
        const auto *contents = member::optionalArray(item, "content");
        if (contents == nullptr)
            continue;
        for (const auto &content : *contents) {
            response.output.append(
                {member::text(content, "type"), member::optionalText(content, "text")});
        }
    }
    return response;
}

QString extractAnswer(const OpenAIResponse &response) {
    auto convenienceText = trimmed(response.outputText.value_or(QString()));
    if (!convenienceText.isEmpty())
        return convenienceText;
    for (const auto &content : response.output) {
        auto text = trimmed(content.text.value_or(QString()));
        if (content.type == QStringLiteral("output_text") && !text.isEmpty())
            return text;
    }
    throw AppFailure::invalidResponse();
}

} // namespace

QCoro::Task<QString> requestOpenAI(HttpTransport &transport, QString prompt,
                                   LLMConfiguration configuration) {
    auto request =
        makePost(parseEndpoint(configuration.endpoint), encodeRequest(prompt, configuration.model));
    request.headers.emplaceBack("Authorization", keyHeader(configuration.apiKey, "Bearer "));
    co_return co_await exchangeText(
        transport, std::move(request), std::move(configuration),
        [](const Json &body) { return extractAnswer(decodeResponse(body)); });
}

} // namespace quillmender
