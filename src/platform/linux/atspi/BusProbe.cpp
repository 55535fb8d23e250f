#include "platform/linux/atspi/BusProbe.h"

#include <QByteArray>
#include <QScopeGuard>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quillmender::atspi {

namespace {

bool waitFor(int descriptor, short events, QDeadlineTimer deadline) {
    for (;;) {
        pollfd entry{descriptor, events, 0};
        const int ready = poll(&entry, 1, int(std::max<qint64>(deadline.remainingTime(), 0)));
        if (ready > 0)
            return (entry.revents & events) != 0;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

} // namespace

QByteArray unixSocketName(const QString &address) {
    for (const QString &alternative : address.split(u';')) {
        if (!alternative.startsWith(QStringLiteral("unix:")))
            continue;
        for (const QString &pair : alternative.mid(5).split(u',')) {
            const qsizetype equals = pair.indexOf(u'=');
            const QString key = pair.left(equals);
            QByteArray value = QByteArray::fromPercentEncoding(pair.mid(equals + 1).toUtf8());
            if (key == QStringLiteral("path"))
                return value;
            if (key == QStringLiteral("abstract"))
                return '\0' + value;
        }
    }
    return {};
}

bool busAuthenticates(const QString &address, QDeadlineTimer deadline) {
    const QByteArray name = unixSocketName(address);
    sockaddr_un socketAddress{};
    if (name.isEmpty() || name.size() >= qsizetype(sizeof socketAddress.sun_path))
        return false;
    socketAddress.sun_family = AF_UNIX;
    std::memcpy(socketAddress.sun_path, name.constData(), size_t(name.size()));

    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0)
        return false;
    const auto closer = qScopeGuard([descriptor] { close(descriptor); });
    const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + size_t(name.size()));
    // A full backlog (EAGAIN) means a bus that no longer accepts: silent as well.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
    if (connect(descriptor, reinterpret_cast<const sockaddr *>(&socketAddress), length) != 0)
        return false;

    const QByteArray identity = QByteArray::number(getuid()).toHex();
    const QByteArray request = '\0' + QByteArrayLiteral("AUTH EXTERNAL ") + identity + "\r\n";
    if (send(descriptor, request.constData(), size_t(request.size()), MSG_NOSIGNAL) !=
        request.size())
        return false;
    if (!waitFor(descriptor, POLLIN, deadline))
        return false;
    char answer[3] = {};
    return recv(descriptor, answer, 2, 0) == 2 && std::strcmp(answer, "OK") == 0;
}

} // namespace quillmender::atspi
