#pragma once

#include "desktop/harness/ChildProcess.h"

namespace quillmender::harness {
class Desktop;
}

namespace quillmender {

/// An assistive tool in a process of its own that walks a program's accessible tree without pause.
class Walker {
  public:
    Walker(harness::Desktop &desktop, qint64 programId, const QString &name);

    /// How many objects each walk so far has met.
    QList<int> walks() const;

    bool isRunning() const { return process_.isRunning(); }

  private:
    harness::ChildProcess process_;
};

} // namespace quillmender
