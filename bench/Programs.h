#pragma once

#include "bench/Samples.h"
#include "desktop/harness/ChildProcess.h"

#include <QDBusConnection>

namespace quillmender::harness {
class AnyDesktop;
}

namespace quillmender::bench {

class StatusNotifierHost;

/// How a program of the status area is started and seen.
struct TrayProgram {
    QString file; ///< beside this program
    QString busName;
    QString objectPath;
};

TrayProgram quillmenderProgram();
TrayProgram floorTrayProgram();

/// A running one, with the moments of its start.
class StartedProgram {
  public:
    /// Returns when its event loop has answered on the bus and its item is in the status area.
    StartedProgram(harness::AnyDesktop &desktop, StatusNotifierHost &host,
                   const TrayProgram &program);

    qint64 pid() const { return process_->pid(); }
    double eventLoopMs() const { return eventLoopMs_; }
    double statusItemMs() const { return statusItemMs_; }

  private:
    std::unique_ptr<harness::ChildProcess> process_;
    double eventLoopMs_ = 0;
    double statusItemMs_ = 0;
};

/// The path of a program that lies beside this one.
QString besideThis(const QString &program);

/// Settings and key with which the program asks a provider at the address.
void configureProvider(harness::AnyDesktop &desktop, const QString &baseUrl);

} // namespace quillmender::bench
