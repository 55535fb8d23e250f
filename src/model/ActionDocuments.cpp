#include "model/ActionDocuments.h"

#include "model/ActionRecord.h"
#include "model/DecodingError.h"
#include "model/Json.h"

namespace quillmender {

namespace {

Json decodeArray(const QByteArray &document) {
    auto json = decodeJson(document);
    if (!json.is_array())
        throw DecodingError(QStringLiteral("The stored actions are not a list."));
    return json;
}

TextAction decodeTextAction(const QString &rawValue) {
    const auto action = textActionFromRawValue(rawValue);
    if (!action)
        throw DecodingError(QStringLiteral("A stored action is not a known one."));
    return *action;
}

QUuid decodeIdentifier(const QString &text) {
    const auto id = QUuid::fromString(text);
    // QUuid also reads braces, and answers null for what it cannot read.
    if (identifierText(id) != text.toUpper())
        throw DecodingError(QStringLiteral("A stored action has no valid identifier."));
    return id;
}

} // namespace

QByteArray encodeBuiltInActions(const QList<BuiltInActionConfig> &actions) {
    auto array = Json::array();
    for (const auto &config : actions) {
        array.push_back(Json::object({{"action", jsonText(rawValue(config.action))},
                                      {"title", jsonText(config.title)},
                                      {"promptTemplate", jsonText(config.promptTemplate)},
                                      {"isHidden", config.isHidden}}));
    }
    return encodeJson(array);
}

QList<BuiltInActionConfig> decodeBuiltInActions(const QByteArray &document) {
    QList<BuiltInActionConfig> actions;
    for (const auto &entry : decodeArray(document)) {
        actions.append({decodeTextAction(member::text(entry, "action")),
                        member::text(entry, "title"), member::text(entry, "promptTemplate"),
                        member::boolean(entry, "isHidden")});
    }
    return actions;
}

QByteArray encodeCustomActions(const QList<CustomAction> &actions) {
    auto array = Json::array();
    for (const auto &action : actions) {
        array.push_back(Json::object({{"id", jsonText(identifierText(action.id))},
                                      {"title", jsonText(action.title)},
                                      {"promptTemplate", jsonText(action.promptTemplate)}}));
    }
    return encodeJson(array);
}

QList<CustomAction> decodeCustomActions(const QByteArray &document) {
    QList<CustomAction> actions;
    for (const auto &entry : decodeArray(document)) {
        actions.append({decodeIdentifier(member::text(entry, "id")), member::text(entry, "title"),
                        member::text(entry, "promptTemplate")});
    }
    return actions;
}

QList<BuiltInActionConfig> loadedBuiltInActions(const std::optional<QByteArray> &document) {
    if (!document)
        return starterActions();
    try {
        return reconciledBuiltInActions(decodeBuiltInActions(*document));
    } catch (const DecodingError &) {
        return starterActions();
    }
}

QList<CustomAction> loadedCustomActions(const std::optional<QByteArray> &document) {
    if (!document)
        return {};
    try {
        return decodeCustomActions(*document);
    } catch (const DecodingError &) {
        return {};
    }
}

} // namespace quillmender
