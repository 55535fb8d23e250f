#include "support/ProviderAnswers.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace quillmender::test {

QByteArray jsonText(const QString &text) {
    const auto array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

QByteArray openAIBody(const QString &text) {
    return R"({"id":"resp_1","status":"completed","output":[{"type":"message","role":"assistant",)"
           R"("content":[{"type":"output_text","annotations":[],"text":)" +
           jsonText(text) + "}]}]}";
}

QByteArray anthropicBody(const QString &text) {
    return R"({"id":"msg_1","type":"message","role":"assistant","content":[)"
           R"({"type":"text","text":)" +
           jsonText(text) + R"(}],"stop_reason":"end_turn"})";
}

QByteArray geminiBody(const QString &text) {
    return R"({"candidates":[{"content":{"parts":[{"text":)" + jsonText(text) +
           R"(}],"role":"model"},"finishReason":"STOP","index":0}]})";
}

QByteArray errorBody(const QString &message) {
    return R"({"error":{"type":"error","message":)" + jsonText(message) + "}}";
}

} // namespace quillmender::test
