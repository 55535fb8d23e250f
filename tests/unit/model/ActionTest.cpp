#include "model/ActionListItem.h"
#include "model/PromptAction.h"

#include <gtest/gtest.h>

namespace quillmender {

namespace {

QString render(const QString &promptTemplate, const QString &text) {
    const BuiltInActionConfig config{TextAction::casual, QString(), promptTemplate, false};
    const CustomAction action{QUuid(), QString(), promptTemplate};
    const auto prompt = PromptAction::builtIn(config).prompt(text);
    EXPECT_EQ(PromptAction::custom(action).prompt(text), prompt);
    return prompt;
}

TEST(ActionTest, BuiltInActionsHaveTheirTexts) {
    struct Row {
        const char *raw;
        const char *title;
        const char *subtitle;
        const char *symbol;
        const char *promptTemplate;
    };
    const std::array rows{
        Row{"formalize", "Formalize", "More formal, same language", "textformat.alt",
            "Rewrite the text in a more formal register.\nKeep the text in its original "
            "language.\nPreserve meaning, formatting, and structure unless a change is necessary "
            "for clarity.\nReturn only the transformed text.\n\nText:\n{{text}}"},
        Row{"simplify", "Simplify", "Clearer and simpler, same language",
            "line.3.horizontal.decrease",
            "Rewrite the text so it is simpler and clearer.\nKeep the text in its original "
            "language.\nPreserve meaning and formatting.\nReturn only the transformed "
            "text.\n\nText:\n{{text}}"},
        Row{"casual", "Make It Casual", "More relaxed, same language",
            "bubble.left.and.exclamationmark.bubble.right",
            "Rewrite the text in a more casual and natural tone.\nKeep the text in its original "
            "language.\nPreserve meaning and formatting.\nReturn only the transformed "
            "text.\n\nText:\n{{text}}"},
        Row{"translateFrench", "Translate to French", "Translate the selection into French",
            "globe",
            "Translate the text into French.\nPreserve meaning, formatting, names, and line "
            "breaks.\nReturn only the translated text.\n\nText:\n{{text}}"},
        Row{"translatePortugueseBrazil", "Translate to Portuguese (Brazil)",
            "Translate the selection into pt-BR", "globe",
            "Translate the text into Brazilian Portuguese.\nPreserve meaning, formatting, names, "
            "and line breaks.\nReturn only the translated text.\n\nText:\n{{text}}"},
        Row{"translateEnglish", "Translate to English", "Translate the selection into English",
            "globe",
            "Translate the text into English.\nPreserve meaning, formatting, names, and line "
            "breaks.\nReturn only the translated text.\n\nText:\n{{text}}"},
        Row{"fixGrammar", "Fix My Grammar", "Correct grammar while preserving structure",
            "checkmark.bubble",
            "Correct grammar, spelling, punctuation, and agreement issues in the text.\nWork in "
            "whatever language the text uses.\nPreserve the original wording, tone, sentence "
            "order, and line breaks as much as possible.\nReturn only the corrected "
            "text.\n\nText:\n{{text}}"},
    };
    const auto starters = starterActions();
    ASSERT_EQ(starters.size(), static_cast<qsizetype>(rows.size()));
    for (size_t index = 0; index < rows.size(); ++index) {
        const auto &row = rows.at(index);
        const auto &config = starters.at(static_cast<qsizetype>(index));
        const auto action = PromptAction::builtIn(config);
        EXPECT_EQ(config.action, allTextActions.at(index));
        EXPECT_EQ(action.id().toStdString(), std::string("builtin-") + row.raw);
        EXPECT_EQ(action.title().toStdString(), row.title);
        EXPECT_EQ(action.subtitle().toStdString(), row.subtitle);
        EXPECT_EQ(action.systemImage().toStdString(), row.symbol);
        EXPECT_EQ(config.promptTemplate.toStdString(), row.promptTemplate);
        EXPECT_FALSE(config.isHidden);
        EXPECT_EQ(textActionFromRawValue(QString::fromUtf8(row.raw)), config.action);
        EXPECT_EQ(ActionListItem::builtIn(config).id(), action.id());
        EXPECT_EQ(ActionListItem::builtIn(config).systemImage(), action.systemImage());
    }
}

TEST(ActionTest, CustomActionsFollowTheirIdentifier) {
    const CustomAction stored{QUuid::fromString(u"{0c1d2e3f-aaaa-bbbb-cccc-0123456789ab}"),
                              QStringLiteral("Title"), QStringLiteral("Template")};
    const auto action = PromptAction::custom(stored);
    EXPECT_EQ(action.id(), QStringLiteral("custom-0C1D2E3F-AAAA-BBBB-CCCC-0123456789AB"));
    EXPECT_EQ(action.title(), QStringLiteral("Title"));
    EXPECT_EQ(action.subtitle(), QStringLiteral("Custom prompt"));
    EXPECT_EQ(action.systemImage(), QStringLiteral("sparkles.rectangle.stack"));
    EXPECT_EQ(ActionListItem::custom(stored).id(), action.id());
    EXPECT_EQ(ActionListItem::custom(stored).systemImage(), action.systemImage());
}

TEST(ActionTest, TheIdentifierDoesNotFollowTheTexts) {
    const BuiltInActionConfig edited{TextAction::casual, QStringLiteral("New"),
                                     QStringLiteral("Other"), true};
    EXPECT_EQ(PromptAction::builtIn(edited).id(), QStringLiteral("builtin-casual"));
    EXPECT_EQ(PromptAction::builtIn(edited).title(), QStringLiteral("New"));
}

TEST(ActionTest, OnlyAKnownRawValueIsAnAction) {
    for (const char *other : {"", "Casual", "casual ", "CASUAL", "Make It Casual", "translate"})
        EXPECT_EQ(textActionFromRawValue(QString::fromUtf8(other)), std::nullopt) << other;
}

TEST(ActionTest, ActionsDifferByEachOfTheirValues) {
    const BuiltInActionConfig config{TextAction::casual, QStringLiteral("T"), QStringLiteral("P"),
                                     false};
    auto other = config;
    EXPECT_EQ(PromptAction::builtIn(config), PromptAction::builtIn(other));
    other.title = QStringLiteral("U");
    EXPECT_FALSE(PromptAction::builtIn(config) == PromptAction::builtIn(other));
    other = config;
    other.promptTemplate = QStringLiteral("Q");
    EXPECT_FALSE(PromptAction::builtIn(config) == PromptAction::builtIn(other));
    other = config;
    other.isHidden = true;
    EXPECT_FALSE(PromptAction::builtIn(config) == PromptAction::builtIn(other));
    const CustomAction mine{QUuid::createUuid(), QStringLiteral("T"), QStringLiteral("P")};
    auto twin = mine;
    twin.id = QUuid::createUuid();
    EXPECT_FALSE(PromptAction::custom(mine) == PromptAction::custom(twin));
}

TEST(ActionTest, ATemplateWithoutPlaceholderGetsTheTextUnderAHeading) {
    EXPECT_EQ(render(QString(), QStringLiteral("x")), QStringLiteral("\n\nText:\nx"));
    EXPECT_EQ(render(QStringLiteral(" \n\t"), QStringLiteral("x")), QStringLiteral("\n\nText:\nx"));
    EXPECT_EQ(render(QStringLiteral(" Do it.\n"), QStringLiteral(" x ")),
              QStringLiteral("Do it.\n\nText:\n x "));
    EXPECT_EQ(render(QStringLiteral("{{ text }} {{Text}} {text}"), QStringLiteral("x")),
              QStringLiteral("{{ text }} {{Text}} {text}\n\nText:\nx"));
}

TEST(ActionTest, OnlyTheTemplateIsTrimmed) {
    EXPECT_EQ(render(QStringLiteral("  Line: {{text}}\n\n"), QStringLiteral("  x\n ")),
              QStringLiteral("Line:   x\n "));
    EXPECT_EQ(render(QStringLiteral("  {{text}}\n"), QString()), QString());
}

TEST(ActionTest, EveryPlaceholderIsReplacedOnce) {
    EXPECT_EQ(render(QStringLiteral("{{text}}-{{text}}"), QStringLiteral("x")),
              QStringLiteral("x-x"));
    EXPECT_EQ(render(QStringLiteral("a {{text}} b"), QStringLiteral("<{{text}}>")),
              QStringLiteral("a <{{text}}> b"));
    EXPECT_EQ(render(QStringLiteral("a {{text}} b"), QString()), QStringLiteral("a  b"));
    EXPECT_EQ(render(QStringLiteral("{{{text}}}"), QStringLiteral("\\1$&")),
              QStringLiteral("{\\1$&}"));
}

TEST(ActionTest, VisibleActionsAreTheShownBuiltInsThenTheCustomOnes) {
    auto builtIns = starterActions();
    const CustomAction mine{QUuid::createUuid(), QStringLiteral("Mine"), QString()};
    builtIns[1].isHidden = true;
    const auto actions = visibleActions(builtIns, {mine});
    ASSERT_EQ(actions.size(), 7);
    EXPECT_EQ(actions.at(0).id(), QStringLiteral("builtin-formalize"));
    EXPECT_EQ(actions.at(1).id(), QStringLiteral("builtin-casual"));
    EXPECT_EQ(actions.at(6), PromptAction::custom(mine));

    for (auto &config : builtIns)
        config.isHidden = true;
    EXPECT_EQ(visibleActions(builtIns, {mine}).size(), 1);
    EXPECT_TRUE(visibleActions(builtIns, {}).isEmpty());
}

} // namespace

} // namespace quillmender
