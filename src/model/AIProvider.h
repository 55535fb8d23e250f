#pragma once

#include <QString>

#include <array>
#include <optional>

namespace quillmender {

/// The providers of language models, in the order in which they are offered.
enum class AIProvider { openAI, anthropic, gemini };

inline constexpr std::array allProviders{AIProvider::openAI, AIProvider::anthropic,
                                         AIProvider::gemini};

/// The text that stands for the provider in settings and in the names of stored secrets.
QString rawValue(AIProvider provider);

/// The provider of exactly this raw value, if there is one.
std::optional<AIProvider> providerFromRawValue(const QString &rawValue);

/// What the user sees; the name of the model family where that is the better known one.
QString displayName(AIProvider provider);

QString defaultModel(AIProvider provider);

/// The whole request URL; for Gemini the base URL to which the model is appended.
QString defaultEndpoint(AIProvider provider);

} // namespace quillmender
