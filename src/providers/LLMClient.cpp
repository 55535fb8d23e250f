#include "providers/LLMClient.h"

#include "model/AppFailure.h"
#include "providers/AnthropicExchange.h"
#include "providers/GeminiExchange.h"
#include "providers/OpenAIExchange.h"

namespace quillmender {

namespace {

QString generationHeader() {
    return QStringLiteral(
        "Use the source text below as raw notes, context, or a rough request.\n"
        "Follow the instruction to generate the final text the user wants.\n"
        "If the instruction does not specify a target language, preserve the language implied by "
        "the source text.\n"
        "Return only the final generated text.\n\nInstruction:\n");
}

} // namespace

QCoro::Task<QString> LLMClient::transform(QString prompt, LLMConfiguration configuration) const {
    return request(std::move(prompt), std::move(configuration));
}

QCoro::Task<QString> LLMClient::generate(QString from, QString instruction,
                                         LLMConfiguration configuration) const {
    return request(generationHeader() + instruction + QStringLiteral("\n\nSource text:\n") + from,
                   std::move(configuration));
}

QCoro::Task<QString> LLMClient::request(QString prompt, LLMConfiguration configuration) const {
    auto &transport = *transport_;
    if (configuration.apiKey.isEmpty())
        throw AppFailure::missingAPIKey(configuration.provider);
    switch (configuration.provider) {
    case AIProvider::openAI:
        co_return co_await requestOpenAI(transport, std::move(prompt), std::move(configuration));
    case AIProvider::anthropic:
        co_return co_await requestAnthropic(transport, std::move(prompt), std::move(configuration));
    case AIProvider::gemini:
        co_return co_await requestGemini(transport, std::move(prompt), std::move(configuration));
    }
    throw AppFailure::invalidResponse();
}

} // namespace quillmender
