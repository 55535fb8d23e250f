#include "desktop/harness/ChildProcess.h"

#include "desktop/harness/CrashGuard.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QFile>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace quillmender::harness {

namespace {

constexpr int politeEndMs = 2000;

void becomeGroupThatDiesWithParent() {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

ChildProcess::ChildProcess(const Command &command)
    : logFile_(command.logFile),
      process_(std::make_unique<QProcess>()) {
    process_->setProgram(command.program);
    process_->setArguments(command.arguments);
    process_->setProcessEnvironment(command.environment);
    process_->setWorkingDirectory(command.workingDirectory);
    process_->setChildProcessModifier(becomeGroupThatDiesWithParent);
    if (command.pipeOutput) {
        process_->setStandardErrorFile(command.logFile, QIODevice::Append);
    } else {
        process_->setProcessChannelMode(QProcess::MergedChannels);
        process_->setStandardOutputFile(command.logFile, QIODevice::Append);
    }
    process_->start();
    if (!process_->waitForStarted())
        throw HarnessError(
            QStringLiteral("cannot start %1: %2").arg(command.program, process_->errorString()));
    pid_ = process_->processId();
    CrashGuard::instance().watchGroup(pid_);
    process_->write(command.input);
    process_->closeWriteChannel();
}

ChildProcess::~ChildProcess() {
    end();
}

bool ChildProcess::isRunning() const {
    return process_->state() != QProcess::NotRunning;
}

std::optional<int> ChildProcess::exitCode() const {
    if (isRunning() || process_->exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return process_->exitCode();
}

QByteArray ChildProcess::readLine(std::chrono::milliseconds deadline) {
    waitUntil([this] { return process_->canReadLine() || !isRunning(); },
              QStringLiteral("a line from %1").arg(process_->program()), deadline);
    if (!process_->canReadLine())
        throw HarnessError(
            QStringLiteral("%1 ended: %2").arg(process_->program(), QString::fromUtf8(log())));
    return process_->readLine().trimmed();
}

QByteArray ChildProcess::log() const {
    QFile file(logFile_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ChildProcess::suspend() {
    signalGroup(SIGSTOP);
}

void ChildProcess::resume() {
    signalGroup(SIGCONT);
}

void ChildProcess::end() {
    if (isRunning()) {
        signalGroup(SIGTERM);
        signalGroup(SIGCONT);
        process_->waitForFinished(politeEndMs);
    }
    kill();
}

void ChildProcess::kill() {
    // The group can outlive its leader.
    signalGroup(SIGKILL);
    if (isRunning())
        process_->waitForFinished();
    CrashGuard::instance().forgetGroup(pid_);
}

void ChildProcess::signalGroup(int signal) const {
    if (pid_ > 0)
        ::kill(static_cast<pid_t>(-pid_), signal);
}

} // namespace quillmender::harness
