#pragma once

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <memory>

namespace quillmender {

/// Counts the operations of sessions that are under way, so that the end of the program can wait
/// until each has left the user's text and pasteboard whole.
class RunningOperations : public QObject {
    Q_OBJECT

  public:
    struct End {
        QPointer<RunningOperations> operations;
        void operator()(RunningOperations *) const;
    };
    /// An operation under way, until it is destroyed.
    using Mark = std::unique_ptr<RunningOperations, End>;

    [[nodiscard]] Mark begin();

    /// Completes when none is under way, or after `limit`.
    QCoro::Task<> allEnded(std::chrono::milliseconds limit);

  Q_SIGNALS:
    void oneEnded();

  private:
    int count_ = 0;
};

} // namespace quillmender
