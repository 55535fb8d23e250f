#include "model/AIProvider.h"

#include <algorithm>

namespace quillmender {

namespace {

struct ProviderTexts {
    QString rawValue;
    QString displayName;
    QString defaultModel;
    QString defaultEndpoint;
};

const ProviderTexts &textsOf(AIProvider provider) {
    static const std::array<ProviderTexts, allProviders.size()> texts{
        ProviderTexts{QStringLiteral("openAI"), QStringLiteral("OpenAI"),
                      QStringLiteral("gpt-5-mini"),
                      QStringLiteral("https://api.openai.com/v1/responses")},
        ProviderTexts{QStringLiteral("anthropic"), QStringLiteral("Claude"),
                      QStringLiteral("claude-sonnet-4-20250514"),
                      QStringLiteral("https://api.anthropic.com/v1/messages")},
        ProviderTexts{QStringLiteral("gemini"), QStringLiteral("Gemini"),
                      QStringLiteral("gemini-2.5-flash"),
                      QStringLiteral("https://generativelanguage.googleapis.com/v1beta/models")},
    };
    return texts.at(static_cast<size_t>(provider));
}

} // namespace

QString rawValue(AIProvider provider) {
    return textsOf(provider).rawValue;
}

std::optional<AIProvider> providerFromRawValue(const QString &rawValue) {
    const auto *const found = std::ranges::find(
        allProviders, rawValue, [](AIProvider provider) { return textsOf(provider).rawValue; });
    if (found == allProviders.end())
        return std::nullopt;
    return *found;
}

QString displayName(AIProvider provider) {
    return textsOf(provider).displayName;
}

QString defaultModel(AIProvider provider) {
    return textsOf(provider).defaultModel;
}

QString defaultEndpoint(AIProvider provider) {
    return textsOf(provider).defaultEndpoint;
}

} // namespace quillmender
