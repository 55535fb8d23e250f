#pragma once

#include "desktop/atspi/ScriptedApplication.h"
#include "desktop/harness/ChildProcess.h"
#include "desktop/harness/Desktop.h"

namespace quillmender::atspi {

/// A scripted application in a process of its own, and in the registry.
class AccessibleProgram {
  public:
    struct Options {
        bool isActive = true;
        uint fieldRole = ScriptedApplication::textRole;
        int selectionStart = 0;
        int selectionEnd = 0;
        /// Starts and ends: it takes the next one whenever its text has been read.
        QList<std::pair<int, int>> laterSelections{};
    };

    AccessibleProgram(harness::Desktop &desktop, const QString &text, const Options &options);
    AccessibleProgram(harness::Desktop &desktop, const QString &text);

    qint64 pid() const { return process_.pid(); }
    harness::ChildProcess &process() { return process_; }

  private:
    harness::ChildProcess process_;
};

} // namespace quillmender::atspi
