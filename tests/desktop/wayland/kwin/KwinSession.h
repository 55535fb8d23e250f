#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QTemporaryDir>

#include <memory>

namespace quillmender {

/// A session bus and KWin without a screen, in the environment of this process, whose program has
/// KWin's leave to see windows and to type. They end with this object.
class KwinSession {
  public:
    /// What it takes and this machine has not; empty when it has all.
    static QStringList missingPrograms();

    /// Throws HarnessError when it does not start.
    KwinSession();
    ~KwinSession();

  private:
    void setEnvironment();
    void startBus();
    void permitThisProgram();
    void startKwin();
    void write(const QString &name, const QByteArray &contents) const;
    void start(std::unique_ptr<harness::ChildProcess> &process, const QString &program,
               const QStringList &arguments, bool pipeOutput);

    QTemporaryDir folder_;
    std::unique_ptr<harness::ChildProcess> bus_;
    std::unique_ptr<harness::ChildProcess> kwin_;
};

} // namespace quillmender
