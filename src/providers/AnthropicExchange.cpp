#include "providers/AnthropicExchange.h"

#include "providers/Envelope.h"

#include <QList>

namespace quillmender {

namespace {

constexpr int maxTokens = 2048;

struct AnthropicContent {
    QString type;
    std::optional<QString> text;
};

Json encodeRequest(const QString &prompt, const QString &model) {
    return Json{
        {"model", jsonText(model)},
        {"max_tokens", maxTokens},
        {"system", jsonText(systemPrompt())},
        {"messages", Json::array({Json{{"role", "user"}, {"content", jsonText(prompt)}}})},
    };
}

QList<AnthropicContent> decodeResponse(const Json &body) {
    QList<AnthropicContent> blocks;
    for (const auto &block : member::array(body, "content"))
        blocks.append({member::text(block, "type"), member::optionalText(block, "text")});
    return blocks;
}

QString joinTexts(const QList<AnthropicContent> &blocks) {
    QString joined;
    for (const auto &block : blocks) {
        if (block.type == QStringLiteral("text"))
            joined += block.text.value_or(QString());
    }
    return joined;
}

} // namespace

QCoro::Task<QString> requestAnthropic(HttpTransport &transport, QString prompt,
                                      LLMConfiguration configuration) {
    auto request =
        makePost(parseEndpoint(configuration.endpoint), encodeRequest(prompt, configuration.model));
    request.headers.emplaceBack("x-api-key", keyHeader(configuration.apiKey));
    request.headers.emplaceBack("anthropic-version", "2023-06-01");
    co_return co_await exchangeText(
        transport, std::move(request), std::move(configuration),
        [](const Json &body) { return requireAnswer(joinTexts(decodeResponse(body))); });
}

} // namespace quillmender
