#include "desktop/x11/XServerProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace quillmender::x11 {

namespace {

QProcessEnvironment environmentOf(const QByteArray &display) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
    return environment;
}

void end(QProcess &process) {
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(5000)) {
        process.kill();
        process.waitForFinished(5000);
    }
}

} // namespace

XServerProcess::XServerProcess(const QStringList &moreArguments) {
    process_.setProcessChannelMode(QProcess::SeparateChannels);
    process_.setStandardErrorFile(QProcess::nullDevice());
    const QStringList arguments{QStringLiteral("-displayfd"),  QStringLiteral("1"),
                                QStringLiteral("-screen"),     QStringLiteral("0"),
                                QStringLiteral("1024x768x24"), QStringLiteral("-nolisten"),
                                QStringLiteral("tcp"),         QStringLiteral("-noreset")};
    process_.start(QStringLiteral("Xvfb"), arguments + moreArguments);
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(20'000)) {
            ADD_FAILURE() << "Xvfb does not start";
            return;
        }
    }
    display_ = ':' + process_.readLine().trimmed();
}

XServerProcess::~XServerProcess() {
    end(process_);
}

QByteArray XServerProcess::run(const QString &program, const QStringList &arguments,
                               const QByteArray &input) const {
    QProcess process;
    process.setProcessEnvironment(environmentOf(display_));
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(20'000) || process.exitCode() != 0)
        ADD_FAILURE() << program.toStdString()
                      << " failed: " << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

std::unique_ptr<QProcess> XServerProcess::start(const QString &program,
                                                const QStringList &arguments) const {
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environmentOf(display_));
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    if (!process->waitForStarted(10'000))
        ADD_FAILURE() << program.toStdString() << " does not start";
    return process;
}

} // namespace quillmender::x11
