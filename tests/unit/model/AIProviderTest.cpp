#include "model/AIProvider.h"

#include <gtest/gtest.h>

namespace quillmender {

namespace {

TEST(AIProviderTest, EveryProviderHasItsTexts) {
    struct Row {
        AIProvider provider;
        const char *raw;
        const char *name;
        const char *model;
        const char *endpoint;
    };
    const std::array rows{
        Row{AIProvider::openAI, "openAI", "OpenAI", "gpt-5-mini",
            "https://api.openai.com/v1/responses"},
        Row{AIProvider::anthropic, "anthropic", "Claude", "claude-sonnet-4-20250514",
            "https://api.anthropic.com/v1/messages"},
        Row{AIProvider::gemini, "gemini", "Gemini", "gemini-2.5-flash",
            "https://generativelanguage.googleapis.com/v1beta/models"},
    };
    ASSERT_EQ(rows.size(), allProviders.size());
    for (size_t index = 0; index < rows.size(); ++index) {
        const auto &row = rows.at(index);
        EXPECT_EQ(allProviders.at(index), row.provider);
        EXPECT_EQ(rawValue(row.provider).toStdString(), row.raw);
        EXPECT_EQ(displayName(row.provider).toStdString(), row.name);
        EXPECT_EQ(defaultModel(row.provider).toStdString(), row.model);
        EXPECT_EQ(defaultEndpoint(row.provider).toStdString(), row.endpoint);
    }
}

TEST(AIProviderTest, ARawValueIsReadExactly) {
    for (const auto provider : allProviders)
        EXPECT_EQ(providerFromRawValue(rawValue(provider)), provider);
    for (const auto *other : {"Gemini", "openai", "", " gemini", "Claude"})
        EXPECT_EQ(providerFromRawValue(QString::fromUtf8(other)), std::nullopt) << other;
}

} // namespace

} // namespace quillmender
