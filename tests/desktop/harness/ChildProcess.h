#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

namespace quillmender::harness {

/// What to start and where its output goes.
struct Command {
    QString program;
    QStringList arguments;
    QProcessEnvironment environment;
    QString logFile;
    /// Written to its standard input, which is then closed.
    QByteArray input;
    /// Standard output goes to readLine() and not to the log.
    bool pipeOutput = false;
    QString workingDirectory;
};

/// A running program in a process group of its own. It is ended, with everything that it started,
/// when this object goes away, and also when this process dies.
class ChildProcess {
  public:
    /// Throws HarnessError when the program cannot be started.
    explicit ChildProcess(const Command &command);
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;
    ~ChildProcess();

    qint64 pid() const { return pid_; }
    bool isRunning() const;
    /// Absent while it runs or when a signal ended it.
    std::optional<int> exitCode() const;

    /// The next line of its piped output. Throws when it ends or the deadline passes first.
    QByteArray readLine(std::chrono::milliseconds deadline);

    /// Everything that it has written to its log so far.
    QByteArray log() const;

    /// Stops and continues it as job control does (SIGSTOP, SIGCONT).
    void suspend();
    void resume();

    /// Asks the whole group to end, insists after two seconds, and waits for it.
    void end();

    /// Ends the group with SIGKILL at once.
    void kill();

  private:
    void signalGroup(int signal) const;

    QString logFile_;
    std::unique_ptr<QProcess> process_;
    qint64 pid_ = 0;
};

} // namespace quillmender::harness
