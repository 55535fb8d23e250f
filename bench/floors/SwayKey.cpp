#include "SwayKey.h"

#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr QByteArrayView magic = "i3-ipc";
constexpr auto boundCommand = "nop floor";

using Numbers = std::array<quint32, 2>; ///< length and type, in the machine's own order of bytes

constexpr qsizetype headerSize = magic.size() + qsizetype{sizeof(Numbers)};

} // namespace

SwayKey::SwayKey(std::function<void()> pressed) : pressed_(std::move(pressed)) {
    constexpr quint32 runCommand = 0;
    constexpr quint32 subscribe = 2;
    QObject::connect(&socket_, &QLocalSocket::readyRead, &socket_, [this] { read(); });
    socket_.connectToServer(qEnvironmentVariable("SWAYSOCK"));
    socket_.waitForConnected();
    send(subscribe, "[\"binding\"]");
    send(runCommand, QByteArray("bindsym --no-repeat Ctrl+Mod1+Return ") + boundCommand);
}

void SwayKey::send(quint32 type, const QByteArray &payload) {
    const Numbers numbers{static_cast<quint32>(payload.size()), type};
    socket_.write(magic.toByteArray() +
                  QByteArray(reinterpret_cast<const char *>(numbers.data()), sizeof(numbers)) +
                  payload);
}

void SwayKey::read() {
    constexpr quint32 bindingEvent = 0x80000005;
    unread_ += socket_.readAll();
    while (unread_.size() >= headerSize) {
        Numbers numbers{};
        std::memcpy(numbers.data(), unread_.constData() + magic.size(), sizeof(numbers));
        const qsizetype size = headerSize + qsizetype{numbers[0]};
        if (unread_.size() < size)
            return;
        const QByteArray message = unread_.first(size);
        unread_.remove(0, size);
        if (numbers[1] == bindingEvent && message.contains(boundCommand))
            pressed_();
    }
}
