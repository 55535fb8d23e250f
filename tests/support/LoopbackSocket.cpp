#include "support/LoopbackSocket.h"

#include <array>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quillmender::test {

LoopbackSocket::~LoopbackSocket() {
    ::close(descriptor_);
}

bool LoopbackSocket::waitFor(short events) const {
    std::array<pollfd, 2> polled{pollfd{descriptor_, events, 0},
                                 pollfd{wakeDescriptor_, POLLIN, 0}};
    return ::poll(polled.data(), polled.size(), -1) > 0 && polled[1].revents == 0;
}

int LoopbackSocket::accept() const {
    return waitFor(POLLIN) ? ::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC) : -1;
}

std::optional<QByteArray> LoopbackSocket::receive() const {
    QByteArray buffer(qsizetype{64} * 1024, Qt::Uninitialized);
    if (!waitFor(POLLIN))
        return std::nullopt;
    const auto count = ::recv(descriptor_, buffer.data(), static_cast<size_t>(buffer.size()), 0);
    if (count <= 0)
        return std::nullopt;
    buffer.truncate(count);
    return buffer;
}

bool LoopbackSocket::send(const QByteArray &bytes) const {
    for (qsizetype sent = 0; sent < bytes.size();) {
        if (!waitFor(POLLOUT))
            return false;
        const auto count =
            ::send(descriptor_, bytes.constData() + sent, static_cast<size_t>(bytes.size() - sent),
                   MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && errno != EAGAIN)
            return false;
        sent += count > 0 ? count : 0;
    }
    return true;
}

bool LoopbackSocket::stayOpen(std::chrono::milliseconds duration) const {
    std::array<pollfd, 2> polled{pollfd{descriptor_, POLLRDHUP, 0},
                                 pollfd{wakeDescriptor_, POLLIN, 0}};
    return ::poll(polled.data(), polled.size(), static_cast<int>(duration.count())) == 0;
}

void LoopbackSocket::resetOnClose() const {
    const linger abortive{1, 0};
    ::setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &abortive, sizeof abortive);
}

} // namespace quillmender::test
