#pragma once

#include <QJsonDocument>
#include <QString>

namespace quillmender::harness {

/// Questions and orders to a sway, over the socket that it has for them.
class SwayIpc {
  public:
    enum class Message : quint32 { runCommand = 0, getOutputs = 3, getTree = 4, getVersion = 7 };

    explicit SwayIpc(QString socketPath) : socketPath_(std::move(socketPath)) {}

    const QString &socketPath() const { return socketPath_; }

    /// Throws HarnessError when it does not answer.
    QJsonDocument ask(Message message, const QByteArray &payload = {}) const;

    /// Throws HarnessError when sway refuses it.
    void run(const QString &command) const;

  private:
    QString socketPath_;
};

} // namespace quillmender::harness
