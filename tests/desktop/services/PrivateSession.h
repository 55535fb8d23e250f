#pragma once

#include <QProcess>
#include <QString>

#include <memory>

namespace quillmender {

/// Milliseconds in which whoever is on the bus has acted.
inline constexpr int deadline = 10000;

/// A D-Bus session bus and an X server of the test's own, put into the environment. They end with
/// this object.
class PrivateSession {
  public:
    PrivateSession();
    ~PrivateSession();

    /// Whether both have started.
    bool isReady() const { return ready_; }

  private:
    static QByteArray firstLine(QProcess &process);

    QProcess bus_;
    QProcess server_;
    bool ready_ = false;
};

} // namespace quillmender
