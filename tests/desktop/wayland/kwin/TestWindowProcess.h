#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QStringList>

namespace quillmender {

/// A program with one window, which says what keys it gets.
class TestWindowProcess {
  public:
    explicit TestWindowProcess(const QString &title);

    qint64 pid() const { return process_.pid(); }

    /// Waits for the next lines that it writes: "active", "inactive", or a key as "Ctrl+C".
    bool writes(const QByteArray &line);

    /// Whatever it has written so far and has not been asked for.
    QByteArrayList written();

  private:
    harness::ChildProcess process_;
    qsizetype read_ = 0;
};

} // namespace quillmender
