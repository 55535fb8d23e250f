#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>

namespace quillmender::test {

/// A connected or listening TCP socket of the loopback interface. Every wait ends early when the
/// wake descriptor becomes readable.
class LoopbackSocket {
  public:
    LoopbackSocket(int descriptor, int wakeDescriptor)
        : descriptor_(descriptor),
          wakeDescriptor_(wakeDescriptor) {}
    LoopbackSocket(const LoopbackSocket &) = delete;
    LoopbackSocket &operator=(const LoopbackSocket &) = delete;
    ~LoopbackSocket();

    /// -1 when woken.
    int accept() const;

    /// Nothing when the peer has closed or the wait was woken.
    std::optional<QByteArray> receive() const;

    /// False when the peer has gone or the wait was woken.
    bool send(const QByteArray &bytes) const;

    /// Waits that long; false when the peer went away or the wait was woken before.
    bool stayOpen(std::chrono::milliseconds duration) const;

    /// Makes the closing of the socket a reset.
    void resetOnClose() const;

  private:
    bool waitFor(short events) const;

    int descriptor_;
    int wakeDescriptor_;
};

} // namespace quillmender::test
