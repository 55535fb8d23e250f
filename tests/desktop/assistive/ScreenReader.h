#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QStringList>

namespace quillmender {

namespace harness {
class Desktop;
}

/// Orca on a desktop, without a voice: what it would say is read in its log.
class ScreenReader {
  public:
    /// Waits until it listens.
    explicit ScreenReader(harness::Desktop &desktop);

    /// What it has said since the last call of `forget`, one utterance each.
    QStringList said() const;

    /// What it has said so far counts no longer.
    void forget();

    /// Waits until it says this, alone or as a part of an utterance.
    void waitUntilSaid(const QString &words) const;

  private:
    QStringList everything() const;

    QString logFile_;
    harness::ChildProcess process_;
    qsizetype forgotten_ = 0;
};

} // namespace quillmender
