#include "model/ActionRecord.h"

namespace quillmender {

QString actionId(const ActionRecord &record) {
    if (const auto *builtIn = std::get_if<BuiltInActionConfig>(&record))
        return QStringLiteral("builtin-") + rawValue(builtIn->action);
    return QStringLiteral("custom-") + identifierText(std::get<CustomAction>(record).id);
}

QString actionTitle(const ActionRecord &record) {
    return std::visit([](const auto &stored) { return stored.title; }, record);
}

QString actionPromptTemplate(const ActionRecord &record) {
    return std::visit([](const auto &stored) { return stored.promptTemplate; }, record);
}

QString actionSystemImage(const ActionRecord &record) {
    if (const auto *builtIn = std::get_if<BuiltInActionConfig>(&record))
        return systemImage(builtIn->action);
    return QStringLiteral("sparkles.rectangle.stack");
}

QString identifierText(const QUuid &id) {
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace quillmender
