#pragma once

#include "desktop/harness/ChildProcess.h"

namespace quillmender::harness {

class XcbConnection;

/// A window manager that follows the freedesktop.org window hints; constructed means ready.
class WindowManager {
  public:
    WindowManager(XcbConnection &connection, const QProcessEnvironment &environment,
                  const QString &logFile);

    ChildProcess &process() { return process_; }

  private:
    ChildProcess process_;
};

} // namespace quillmender::harness
