#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <optional>

namespace quillmender::test {

/// One HTTP request as it came over the wire.
struct ReceivedRequest {
    QByteArray head;            ///< request line and header lines, up to and with the blank line
    QByteArray method;          ///< of the request line
    QByteArray target;          ///< of the request line: path and query as sent
    QByteArrayList headerLines; ///< in their order, without line ends
    QByteArray body;
    int connection = 0; ///< which accepted connection carried it, from 0
    std::chrono::steady_clock::time_point arrivedAt; ///< when its last byte had been read

    /// The value of the first header of that name, in whatever case.
    std::optional<QByteArray> header(const QByteArray &name) const;

    /// Takes one whole request off the front of `received`. Nothing when it is not all there yet.
    static std::optional<ReceivedRequest> take(QByteArray &received);
};

} // namespace quillmender::test
