#include "model/TextAction.h"

#include <algorithm>

namespace quillmender {

namespace {

struct TextActionTexts {
    QString rawValue;
    QString title;
    QString subtitle;
    QString systemImage;
    QString promptTemplate;
};

using TextActionTable = std::array<TextActionTexts, allTextActions.size()>;

TextActionTable makeTable() {
    return {
        TextActionTexts{
            QStringLiteral("formalize"), QStringLiteral("Formalize"),
            QStringLiteral("More formal, same language"), QStringLiteral("textformat.alt"),
            QStringLiteral("Rewrite the text in a more formal register.\n"
                           "Keep the text in its original language.\n"
                           "Preserve meaning, formatting, and structure unless a change is "
                           "necessary for clarity.\n"
                           "Return only the transformed text.\n\nText:\n{{text}}")},
        TextActionTexts{QStringLiteral("simplify"), QStringLiteral("Simplify"),
                        QStringLiteral("Clearer and simpler, same language"),
                        QStringLiteral("line.3.horizontal.decrease"),
                        QStringLiteral("Rewrite the text so it is simpler and clearer.\n"
                                       "Keep the text in its original language.\n"
                                       "Preserve meaning and formatting.\n"
                                       "Return only the transformed text.\n\nText:\n{{text}}")},
        TextActionTexts{QStringLiteral("casual"), QStringLiteral("Make It Casual"),
                        QStringLiteral("More relaxed, same language"),
                        QStringLiteral("bubble.left.and.exclamationmark.bubble.right"),
                        QStringLiteral("Rewrite the text in a more casual and natural tone.\n"
                                       "Keep the text in its original language.\n"
                                       "Preserve meaning and formatting.\n"
                                       "Return only the transformed text.\n\nText:\n{{text}}")},
        TextActionTexts{QStringLiteral("translateFrench"), QStringLiteral("Translate to French"),
                        QStringLiteral("Translate the selection into French"),
                        QStringLiteral("globe"),
                        QStringLiteral("Translate the text into French.\n"
                                       "Preserve meaning, formatting, names, and line breaks.\n"
                                       "Return only the translated text.\n\nText:\n{{text}}")},
        TextActionTexts{QStringLiteral("translatePortugueseBrazil"),
                        QStringLiteral("Translate to Portuguese (Brazil)"),
                        QStringLiteral("Translate the selection into pt-BR"),
                        QStringLiteral("globe"),
                        QStringLiteral("Translate the text into Brazilian Portuguese.\n"
                                       "Preserve meaning, formatting, names, and line breaks.\n"
                                       "Return only the translated text.\n\nText:\n{{text}}")},
        TextActionTexts{QStringLiteral("translateEnglish"), QStringLiteral("Translate to English"),
                        QStringLiteral("Translate the selection into English"),
                        QStringLiteral("globe"),
                        QStringLiteral("Translate the text into English.\n"
                                       "Preserve meaning, formatting, names, and line breaks.\n"
                                       "Return only the translated text.\n\nText:\n{{text}}")},
        TextActionTexts{
            QStringLiteral("fixGrammar"), QStringLiteral("Fix My Grammar"),
            QStringLiteral("Correct grammar while preserving structure"),
            QStringLiteral("checkmark.bubble"),
            QStringLiteral("Correct grammar, spelling, punctuation, and agreement issues in the "
                           "text.\n"
                           "Work in whatever language the text uses.\n"
                           "Preserve the original wording, tone, sentence order, and line breaks "
                           "as much as possible.\n"
                           "Return only the corrected text.\n\nText:\n{{text}}")},
    };
}

const TextActionTexts &textsOf(TextAction action) {
    static const TextActionTable table = makeTable();
    return table.at(static_cast<size_t>(action));
}

} // namespace

QString rawValue(TextAction action) {
    return textsOf(action).rawValue;
}

std::optional<TextAction> textActionFromRawValue(const QString &rawValue) {
    const auto *const found = std::ranges::find(
        allTextActions, rawValue, [](TextAction action) { return textsOf(action).rawValue; });
    if (found == allTextActions.end())
        return std::nullopt;
    return *found;
}

QString defaultTitle(TextAction action) {
    return textsOf(action).title;
}

QString defaultPromptTemplate(TextAction action) {
    return textsOf(action).promptTemplate;
}

QString subtitle(TextAction action) {
    return textsOf(action).subtitle;
}

QString systemImage(TextAction action) {
    return textsOf(action).systemImage;
}

} // namespace quillmender
