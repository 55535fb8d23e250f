#include "PrivateSession.h"

#include <QElapsedTimer>

namespace quillmender {

namespace {
constexpr int deadlineMilliseconds = 20000;
} // namespace

PrivateSession::PrivateSession() {
    bus_.start(QStringLiteral("dbus-daemon"),
               {QStringLiteral("--session"), QStringLiteral("--nofork"),
                QStringLiteral("--print-address=1")});
    server_.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                   QStringLiteral("0"), QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
                   QStringLiteral("tcp")});
    const QByteArray address = firstLine(bus_);
    const QByteArray display = firstLine(server_);
    ready_ = !address.isEmpty() && !display.isEmpty();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    qputenv("DISPLAY", ":" + display);
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("WAYLAND_DISPLAY");
}

PrivateSession::~PrivateSession() {
    for (QProcess *process : {&server_, &bus_}) {
        process->terminate();
        if (!process->waitForFinished(5000))
            process->kill();
    }
}

QByteArray PrivateSession::firstLine(QProcess &process) {
    QElapsedTimer elapsed;
    elapsed.start();
    while (!process.canReadLine() && elapsed.elapsed() < deadlineMilliseconds)
        if (!process.waitForReadyRead(deadlineMilliseconds))
            break;
    return process.readLine().trimmed();
}

} // namespace quillmender
