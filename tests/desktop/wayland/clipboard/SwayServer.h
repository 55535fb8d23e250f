#pragma once

#include <QByteArray>
#include <QProcess>
#include <QTemporaryDir>

namespace quillmender::wayland {

/// A headless compositor of the test's own, in a folder of its own. It ends with this object, and
/// with the test.
class SwayServer {
  public:
    static bool isInstalled();

    SwayServer();
    SwayServer(const SwayServer &) = delete;
    SwayServer &operator=(const SwayServer &) = delete;
    ~SwayServer();

    /// The path of its socket, which does for WAYLAND_DISPLAY.
    const QByteArray &display() const { return display_; }

    bool isRunning() const { return process_.state() != QProcess::NotRunning; }

    /// Ends it without a word to its clients.
    void kill();

    /// Keeps it from attending to anything, until it is let go on.
    void stop();
    void letGoOn();

  private:
    QTemporaryDir folder_;
    QProcess process_;
    QByteArray display_;
};

} // namespace quillmender::wayland
