#include "support/ScriptedAnswer.h"

namespace quillmender::test {

ScriptedAnswer ScriptedAnswer::http(int status, const QByteArray &body,
                                    const QByteArray &contentType,
                                    const QByteArrayList &headerLines) {
    auto head = "HTTP/1.1 " + QByteArray::number(status) + " Scripted\r\n";
    head += "Content-Type: " + contentType + "\r\n";
    head += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    for (const auto &line : headerLines)
        head += line + "\r\n";
    return ScriptedAnswer().send(head + "\r\n" + body);
}

ScriptedAnswer &ScriptedAnswer::send(const QByteArray &bytes, qint64 times) {
    steps_.push_back({Kind::send, bytes, times, {}});
    return *this;
}

ScriptedAnswer &ScriptedAnswer::sendChunk(const QByteArray &bytes) {
    return send(QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n");
}

ScriptedAnswer &ScriptedAnswer::pause(std::chrono::milliseconds duration) {
    steps_.push_back({Kind::pause, {}, 1, duration});
    return *this;
}

ScriptedAnswer &ScriptedAnswer::hold() {
    steps_.push_back({Kind::hold, {}, 1, {}});
    return *this;
}

ScriptedAnswer &ScriptedAnswer::close() {
    steps_.push_back({Kind::close, {}, 1, {}});
    return *this;
}

ScriptedAnswer &ScriptedAnswer::reset() {
    steps_.push_back({Kind::reset, {}, 1, {}});
    return *this;
}

} // namespace quillmender::test
