#pragma once

#include "platform/Lease.h"

#include <QCoroTask>
#include <QObject>

#include <chrono>

namespace quillmender {

/// Counts the operations of sessions that are under way, so that the end of the program can wait
/// until each has left the user's text and pasteboard whole.
class RunningOperations : public QObject {
    Q_OBJECT

  public:
    /// The operation is under way while the lease lives.
    Lease begin();

    bool areUnderWay() const { return count_ > 0; }

    /// Completes when none is under way, or after `limit`.
    QCoro::Task<> allEnded(std::chrono::milliseconds limit);

  Q_SIGNALS:
    void oneEnded();

  private:
    int count_ = 0;
};

} // namespace quillmender
