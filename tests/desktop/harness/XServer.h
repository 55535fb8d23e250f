#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QSize>

namespace quillmender::harness {

/// An X server that draws into memory, on a display of its own.
class XServer {
  public:
    struct Options {
        QSize size{1280, 900};
        int dotsPerInch = 96;
    };

    XServer(const Options &options, const QProcessEnvironment &environment, const QString &logFile);

    /// ":" and the number that the server chose.
    const QString &display() const { return display_; }

    ChildProcess &process() { return process_; }

  private:
    ChildProcess process_;
    QString display_;
};

} // namespace quillmender::harness
