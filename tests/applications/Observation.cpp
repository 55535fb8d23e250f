#include "applications/Observation.h"

namespace quillmender::applications {

namespace {

template <typename Value>
void put(QJsonObject &object, const char *name, const std::optional<Value> &value) {
    if (value)
        object[QLatin1String(name)] = *value;
}

std::optional<int> number(const QJsonObject &object, const char *name) {
    const QJsonValue value = object[QLatin1String(name)];
    return value.isDouble() ? std::optional(value.toInt()) : std::nullopt;
}

std::optional<bool> boolean(const QJsonObject &object, const char *name) {
    const QJsonValue value = object[QLatin1String(name)];
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

} // namespace

Observation Observation::notStarted(const char *why) {
    Observation seen;
    seen.scenario = QStringLiteral("start");
    seen.remark = QString::fromUtf8(why);
    return seen;
}

QJsonObject Observation::toJson() const {
    QJsonObject object{{QStringLiteral("scenario"), scenario},
                       {QStringLiteral("verdict"), static_cast<int>(verdict)},
                       {QStringLiteral("capture"), capture},
                       {QStringLiteral("route"), route},
                       {QStringLiteral("message"), message},
                       {QStringLiteral("remark"), remark},
                       {QStringLiteral("lineEndsBefore"), lineEndsBefore},
                       {QStringLiteral("lineEndsAfter"), lineEndsAfter}};
    put(object, "clipboardIdentical", clipboardIdentical);
    put(object, "isInsertedSelected", isInsertedSelected);
    put(object, "undoSteps", undoSteps);
    put(object, "hotKeyToPanelMs", hotKeyToPanelMs);
    put(object, "answerToTextMs", answerToTextMs);
    return object;
}

Observation Observation::fromJson(const QJsonObject &object) {
    Observation result;
    result.scenario = object[QStringLiteral("scenario")].toString();
    result.verdict = static_cast<Verdict>(object[QStringLiteral("verdict")].toInt());
    result.capture = object[QStringLiteral("capture")].toString();
    result.route = object[QStringLiteral("route")].toString();
    result.message = object[QStringLiteral("message")].toString();
    result.remark = object[QStringLiteral("remark")].toString();
    result.lineEndsBefore = object[QStringLiteral("lineEndsBefore")].toString();
    result.lineEndsAfter = object[QStringLiteral("lineEndsAfter")].toString();
    result.clipboardIdentical = boolean(object, "clipboardIdentical");
    result.isInsertedSelected = boolean(object, "isInsertedSelected");
    result.undoSteps = number(object, "undoSteps");
    result.hotKeyToPanelMs = number(object, "hotKeyToPanelMs");
    result.answerToTextMs = number(object, "answerToTextMs");
    return result;
}

} // namespace quillmender::applications
