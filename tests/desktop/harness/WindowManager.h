#pragma once

#include "desktop/harness/ChildProcess.h"

namespace quillmender::harness {

class XcbConnection;

/// A window manager that follows the freedesktop.org window hints; constructed means ready.
class WindowManager {
  public:
    /// An empty command is the usual one's. One that does not follow the hints is taken as ready
    /// once it manages windows.
    WindowManager(XcbConnection &connection, const QProcessEnvironment &environment,
                  const QString &logFile, const QStringList &command = {});

    ChildProcess &process() { return process_; }

  private:
    ChildProcess process_;
};

} // namespace quillmender::harness
