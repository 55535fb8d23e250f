#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <vector>

namespace quillmender::test {

/// What a loopback server does with one request: steps that are played one after another. After
/// the last step the connection stays open for the next request.
class ScriptedAnswer {
  public:
    enum class Kind { send, pause, hold, close, reset };

    struct Step {
        Kind kind = Kind::send;
        QByteArray bytes;
        qint64 times = 1;
        std::chrono::milliseconds duration{0};
    };

    /// A whole HTTP/1.1 answer with its Content-Length.
    static ScriptedAnswer http(int status, const QByteArray &body,
                               const QByteArray &contentType = "application/json",
                               const QByteArrayList &headerLines = {});

    /// Sends these bytes, so many times over.
    ScriptedAnswer &send(const QByteArray &bytes, qint64 times = 1);

    /// Sends one chunk of a chunked body; an empty chunk ends the body.
    ScriptedAnswer &sendChunk(const QByteArray &bytes);

    ScriptedAnswer &pause(std::chrono::milliseconds duration);

    /// Waits for LoopbackServer::release(), or until the client has closed the connection.
    ScriptedAnswer &hold();

    /// Ends the connection in good order.
    ScriptedAnswer &close();

    /// Ends the connection with a TCP reset.
    ScriptedAnswer &reset();

    const std::vector<Step> &steps() const { return steps_; }

  private:
    std::vector<Step> steps_;
};

} // namespace quillmender::test
