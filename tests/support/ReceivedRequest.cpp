#include "support/ReceivedRequest.h"

namespace quillmender::test {

std::optional<QByteArray> ReceivedRequest::header(const QByteArray &name) const {
    for (const auto &line : headerLines) {
        const auto colon = line.indexOf(':');
        if (line.left(colon).compare(name, Qt::CaseInsensitive) == 0)
            return line.mid(colon + 1).trimmed();
    }
    return std::nullopt;
}

std::optional<ReceivedRequest> ReceivedRequest::take(QByteArray &received) {
    const auto blankLine = received.indexOf("\r\n\r\n");
    if (blankLine < 0)
        return std::nullopt;

    ReceivedRequest request;
    request.head = received.left(blankLine + 4);
    for (auto line : received.left(blankLine).split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        request.headerLines.append(line);
    }
    const auto requestLine = request.headerLines.takeFirst().split(' ');
    request.method = requestLine.value(0);
    request.target = requestLine.value(1);

    const auto bodySize = request.header("content-length").value_or("0").toLongLong();
    if (received.size() < request.head.size() + bodySize)
        return std::nullopt;
    request.body = received.mid(request.head.size(), bodySize);
    request.arrivedAt = std::chrono::steady_clock::now();
    received.remove(0, request.head.size() + bodySize);
    return request;
}

} // namespace quillmender::test
