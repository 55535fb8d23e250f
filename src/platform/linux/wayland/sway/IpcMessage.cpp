#include "platform/linux/wayland/sway/IpcMessage.h"

#include <algorithm>
#include <cstring>

namespace quillmender::sway {

namespace {

constexpr QByteArrayView magic("i3-ipc");
constexpr qsizetype headerSize = magic.size() + 8;

quint32 wordAt(const QByteArray &bytes, qsizetype offset) {
    quint32 word = 0;
    std::memcpy(&word, bytes.constData() + offset, sizeof word);
    return word;
}

void append(QByteArray &bytes, quint32 word) {
    bytes.append(reinterpret_cast<const char *>(&word), sizeof word);
}

} // namespace

QByteArray encode(const IpcMessage &message) {
    QByteArray bytes = magic.toByteArray();
    append(bytes, static_cast<quint32>(message.payload.size()));
    append(bytes, message.type);
    return bytes + message.payload;
}

std::optional<IpcMessage> IpcDecoder::next() {
    const qsizetype seen = std::min(bytes_.size(), magic.size());
    if (!magic.startsWith(QByteArrayView(bytes_).first(seen)))
        isGarbage_ = true;
    if (isGarbage_ || bytes_.size() < headerSize)
        return std::nullopt;
    const quint32 length = wordAt(bytes_, magic.size());
    if (length > longestPayload) {
        isGarbage_ = true;
        return std::nullopt;
    }
    if (bytes_.size() < headerSize + qsizetype{length})
        return std::nullopt;
    IpcMessage message{wordAt(bytes_, magic.size() + 4), bytes_.mid(headerSize, length)};
    bytes_.remove(0, headerSize + qsizetype{length});
    return message;
}

} // namespace quillmender::sway
