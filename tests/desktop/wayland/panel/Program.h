#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>

namespace quillmender::test {

/// A program of the test's desktop, which runs as a plain user and ends with the test. What it
/// writes as JSON, a line for each line that it is sent, is its answer; everything else goes to its
/// log.
class Program {
  public:
    Program(const QString &file, const QStringList &arguments,
            const QProcessEnvironment &environment, const QString &log);
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;
    ~Program();

    /// Sends the line without waiting for what comes of it.
    void tell(const QString &line);

    /// Sends the line and returns the answer; those to what was told before are left out.
    QJsonObject ask(const QString &line);

    bool isRunning() const { return process_.state() == QProcess::Running; }

  private:
    QProcess process_;
    int pending_ = 0; ///< answers that nobody has read
};

/// Gives a file to the user that programs run as.
void giveToUser(const QString &path);

} // namespace quillmender::test
