#pragma once

#include "support/LoopbackSocket.h"
#include "support/ReceivedRequest.h"
#include "support/ScriptedAnswer.h"

#include <QString>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace quillmender::test {

/// An HTTP/1.1 server on 127.0.0.1 that keeps every request byte for byte and plays scripted
/// answers. It runs on threads of its own; every member may be called from any thread.
class LoopbackServer {
  public:
    using Responder = std::function<ScriptedAnswer(const ReceivedRequest &)>;

    /// Listens on a free port. Answers 200 with an empty object until told otherwise.
    LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;
    ~LoopbackServer();

    quint16 port() const { return port_; }

    /// "http://127.0.0.1:<port>", without a slash at its end.
    QString baseUrl() const;

    /// Called on a server thread for each request.
    void setResponder(Responder responder);

    /// Gives every request the same answer.
    void setAnswer(const ScriptedAnswer &answer);

    /// Lets every answer that is at, or comes to, a `hold()` go on.
    void release();

    std::vector<ReceivedRequest> requests() const;
    int connectionCount() const;

    /// Bytes of answers handed to the system so far.
    qint64 bytesSent() const;

    /// Blocks until that many whole requests have arrived. False when the time is over before: so
    /// it is no use on a thread whose event loop the client needs.
    bool waitForRequests(size_t count, std::chrono::milliseconds deadline) const;

  private:
    void acceptConnections();
    void serve(int descriptor, int connection);
    bool play(const ScriptedAnswer &answer, const LoopbackSocket &socket);
    bool playStep(const ScriptedAnswer::Step &step, const LoopbackSocket &socket);
    bool holdUntilReleased(const LoopbackSocket &socket) const;

    int listener_ = -1;
    int wakeDescriptor_ = -1;
    quint16 port_ = 0;

    mutable std::mutex mutex_;
    mutable std::condition_variable requestArrived_;
    Responder responder_;
    std::vector<ReceivedRequest> requests_;
    std::vector<std::thread> connections_;
    qint64 bytesSent_ = 0;
    bool isReleased_ = false;
    std::thread acceptor_;
};

} // namespace quillmender::test
