#include "desktop/wayland/panel/Program.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QFile>
#include <QJsonDocument>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace quillmender::test {

namespace {

constexpr uid_t plainUser = 65534; // some compositors refuse to run as root
constexpr int politeEndMs = 2000;

void becomePlainUser() {
    if (::geteuid() == 0) {
        if (::setgid(plainUser) != 0 || ::setuid(plainUser) != 0)
            ::_exit(126);
    }
    // After the change of the user, which takes it back.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

Program::Program(const QString &file, const QStringList &arguments,
                 const QProcessEnvironment &environment, const QString &log) {
    process_.setProcessEnvironment(environment);
    process_.setChildProcessModifier(becomePlainUser);
    process_.setStandardErrorFile(log, QIODevice::Append);
    process_.start(file, arguments);
    if (!process_.waitForStarted())
        throw harness::HarnessError(
            QStringLiteral("cannot start %1: %2").arg(file, process_.errorString()));
}

Program::~Program() {
    process_.terminate();
    if (!process_.waitForFinished(politeEndMs)) {
        process_.kill();
        process_.waitForFinished();
    }
}

void Program::tell(const QString &line) {
    ++pending_;
    process_.write(line.toUtf8() + '\n');
    process_.waitForBytesWritten();
}

QJsonObject Program::ask(const QString &line) {
    tell(line);
    QJsonObject answer;
    while (pending_ > 0) {
        harness::waitUntil([this] { return process_.canReadLine() || !isRunning(); },
                           QStringLiteral("an answer to '%1'").arg(line));
        if (!process_.canReadLine())
            throw harness::HarnessError(
                QStringLiteral("%1 ended at '%2'").arg(process_.program(), line));
        const QJsonDocument read = QJsonDocument::fromJson(process_.readLine());
        if (!read.isObject())
            continue;
        answer = read.object();
        --pending_;
    }
    return answer;
}

void giveToUser(const QString &path) {
    if (::geteuid() == 0 && ::chown(QFile::encodeName(path).constData(), plainUser, plainUser) != 0)
        throw harness::HarnessError(QStringLiteral("cannot give away %1").arg(path));
}

} // namespace quillmender::test
