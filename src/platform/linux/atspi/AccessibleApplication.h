#pragma once

#include "platform/Workspace.h"

namespace quillmender::atspi {

/// An application that only the accessibility bus knows to be in front.
class AccessibleApplication : public RunningApplication {
  public:
    explicit AccessibleApplication(qint64 processId) : processId_(processId) {}

    qint64 processId() const override { return processId_; }

    bool isSame(const RunningApplication &other) const override {
        return processId_ != 0 && other.processId() == processId_;
    }

  private:
    qint64 processId_;
};

} // namespace quillmender::atspi
