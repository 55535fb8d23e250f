#pragma once

#include <QByteArray>

#include <optional>

namespace quillmender::sway {

/// One message of the i3 protocol: `i3-ipc`, the length of the payload and the type, both 32 bits
/// in the byte order of the machine, then the payload.
struct IpcMessage {
    quint32 type = 0;
    QByteArray payload{};

    /// What the compositor says by itself rather than as an answer.
    bool isEvent() const { return (type & eventBit) != 0; }

    static constexpr quint32 eventBit = 0x80000000;
};

QByteArray encode(const IpcMessage &message);

/// Takes messages out of a stream of bytes that comes in pieces.
class IpcDecoder {
  public:
    /// More than the tree of any desktop, less than would hurt the machine.
    static constexpr quint32 longestPayload = 16 * 1024 * 1024;

    void add(const QByteArray &bytes) { bytes_ += bytes; }

    /// Absent when none is complete, or the stream is garbage.
    std::optional<IpcMessage> next();

    /// Whether what came is no message of the protocol, or one without end. Nothing can be taken
    /// out any more.
    bool isGarbage() const { return isGarbage_; }

  private:
    QByteArray bytes_;
    bool isGarbage_ = false;
};

} // namespace quillmender::sway
