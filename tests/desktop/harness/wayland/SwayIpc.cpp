#include "desktop/harness/wayland/SwayIpc.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocalSocket>

#include <array>
#include <cstring>

namespace quillmender::harness {

namespace {

constexpr QByteArrayView magic = "i3-ipc";
constexpr int deadlineMs = static_cast<int>(defaultDeadline.count());

using Numbers = std::array<quint32, 2>; ///< length and type, in the machine's own order of bytes

QByteArray readExactly(QLocalSocket &socket, qsizetype size) {
    while (socket.bytesAvailable() < size) {
        if (!socket.waitForReadyRead(deadlineMs))
            throw HarnessError(
                QStringLiteral("sway does not answer: %1").arg(socket.errorString()));
    }
    return socket.read(size);
}

} // namespace

QJsonDocument SwayIpc::ask(Message message, const QByteArray &payload) const {
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (!socket.waitForConnected(deadlineMs))
        throw HarnessError(QStringLiteral("no sway at %1").arg(socketPath_));
    const Numbers header{static_cast<quint32>(payload.size()), static_cast<quint32>(message)};
    socket.write(magic.toByteArray() +
                 QByteArray(reinterpret_cast<const char *>(header.data()), sizeof(header)) +
                 payload);
    const QByteArray start = readExactly(socket, magic.size() + qsizetype{sizeof(Numbers)});
    Numbers answer{};
    std::memcpy(answer.data(), start.constData() + magic.size(), sizeof(answer));
    return QJsonDocument::fromJson(readExactly(socket, answer[0]));
}

void SwayIpc::run(const QString &command) const {
    for (const QJsonValue &result : ask(Message::runCommand, command.toUtf8()).array()) {
        if (!result[QStringLiteral("success")].toBool())
            throw HarnessError(QStringLiteral("sway refuses \"%1\": %2")
                                   .arg(command, result[QStringLiteral("error")].toString()));
    }
}

} // namespace quillmender::harness
