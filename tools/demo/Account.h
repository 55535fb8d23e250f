#pragma once

#include <QElapsedTimer>
#include <QString>

namespace quillmender::demo {

/// Prints what happens, step by step, each with the time that it took.
class Account {
  public:
    Account();

    /// A step that has just ended.
    void step(const QString &what);

    qint64 totalMs() const { return sinceStart_.elapsed(); }

  private:
    QElapsedTimer sinceStart_;
    QElapsedTimer sinceStep_;
    int count_ = 0;
};

} // namespace quillmender::demo
