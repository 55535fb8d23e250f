#include "model/PromptAction.h"

#include "model/TextRules.h"

namespace quillmender {

QString PromptAction::subtitle() const {
    if (const auto *builtIn = std::get_if<BuiltInActionConfig>(&record_))
        return quillmender::subtitle(builtIn->action);
    return QStringLiteral("Custom prompt");
}

QString PromptAction::prompt(const QString &text) const {
    const auto placeholder = QStringLiteral("{{text}}");
    auto prompt = trimmed(actionPromptTemplate(record_));
    if (!prompt.contains(placeholder))
        return prompt + QStringLiteral("\n\nText:\n") + text;
    return prompt.replace(placeholder, text);
}

QList<PromptAction> visibleActions(const QList<BuiltInActionConfig> &builtInActions,
                                   const QList<CustomAction> &customActions) {
    QList<PromptAction> actions;
    for (const auto &config : builtInActions) {
        if (!config.isHidden)
            actions.append(PromptAction::builtIn(config));
    }
    for (const auto &action : customActions)
        actions.append(PromptAction::custom(action));
    return actions;
}

} // namespace quillmender
