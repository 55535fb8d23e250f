#include "support/LoopbackServer.h"

#include <arpa/inet.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quillmender::test {

LoopbackServer::LoopbackServer() {
    setAnswer(ScriptedAnswer::http(200, "{}"));
    wakeDescriptor_ = ::eventfd(0, EFD_CLOEXEC);
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *plainAddress = reinterpret_cast<sockaddr *>(&address);
    if (::bind(listener_, plainAddress, size) != 0 || ::listen(listener_, 64) != 0 ||
        ::getsockname(listener_, plainAddress, &size) != 0)
        throw std::runtime_error("no loopback port to listen on");
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { acceptConnections(); });
}

LoopbackServer::~LoopbackServer() {
    ::eventfd_write(wakeDescriptor_, 1);
    acceptor_.join();
    for (auto &connection : connections_)
        connection.join();
    ::close(wakeDescriptor_);
}

QString LoopbackServer::baseUrl() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(port_);
}

void LoopbackServer::setResponder(Responder responder) {
    const std::lock_guard lock(mutex_);
    responder_ = std::move(responder);
}

void LoopbackServer::setAnswer(const ScriptedAnswer &answer) {
    setResponder([answer](const ReceivedRequest &) { return answer; });
}

void LoopbackServer::release() {
    const std::lock_guard lock(mutex_);
    isReleased_ = true;
}

std::vector<ReceivedRequest> LoopbackServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

int LoopbackServer::connectionCount() const {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(connections_.size());
}

qint64 LoopbackServer::bytesSent() const {
    const std::lock_guard lock(mutex_);
    return bytesSent_;
}

bool LoopbackServer::waitForRequests(size_t count, std::chrono::milliseconds deadline) const {
    std::unique_lock lock(mutex_);
    return requestArrived_.wait_for(lock, deadline, [&] { return requests_.size() >= count; });
}

void LoopbackServer::acceptConnections() {
    const LoopbackSocket listener(listener_, wakeDescriptor_);
    for (int connection = 0;; ++connection) {
        const auto descriptor = listener.accept();
        if (descriptor < 0)
            return;
        const std::lock_guard lock(mutex_);
        connections_.emplace_back([=, this] { serve(descriptor, connection); });
    }
}

void LoopbackServer::serve(int descriptor, int connection) {
    const LoopbackSocket socket(descriptor, wakeDescriptor_);
    QByteArray received;
    while (const auto bytes = socket.receive()) {
        received += *bytes;
        while (auto request = ReceivedRequest::take(received)) {
            request->connection = connection;
            Responder responder;
            {
                const std::lock_guard lock(mutex_);
                responder = responder_;
                requests_.push_back(*request);
            }
            requestArrived_.notify_all();
            if (!play(responder(*request), socket))
                return;
        }
    }
}

bool LoopbackServer::play(const ScriptedAnswer &answer, const LoopbackSocket &socket) {
    for (const auto &step : answer.steps()) {
        if (!playStep(step, socket))
            return false;
    }
    return true;
}

bool LoopbackServer::playStep(const ScriptedAnswer::Step &step, const LoopbackSocket &socket) {
    switch (step.kind) {
    case ScriptedAnswer::Kind::send:
        for (qint64 time = 0; time < step.times; ++time) {
            if (!socket.send(step.bytes))
                return false;
            const std::lock_guard lock(mutex_);
            bytesSent_ += step.bytes.size();
        }
        return true;
    case ScriptedAnswer::Kind::pause:
        return socket.stayOpen(step.duration);
    case ScriptedAnswer::Kind::hold:
        return holdUntilReleased(socket);
    case ScriptedAnswer::Kind::reset:
        socket.resetOnClose();
        return false;
    case ScriptedAnswer::Kind::close:
        return false;
    }
    return false;
}

bool LoopbackServer::holdUntilReleased(const LoopbackSocket &socket) const {
    for (;;) {
        {
            const std::lock_guard lock(mutex_);
            if (isReleased_)
                return true;
        }
        if (!socket.stayOpen(std::chrono::milliseconds(5)))
            return false;
    }
}

} // namespace quillmender::test
