#pragma once

#include "platform/linux/wayland/sway/SwayIpc.h"
#include "unit/platform/wayland/WaitFor.h"

#include <QJsonObject>
#include <QLocalServer>
#include <QTemporaryDir>

#include <functional>

namespace quillmender::sway {

using wayland::waitFor;

/// A compositor's socket that answers as a test has it.
class FakeSway : public QObject {
  public:
    FakeSway();

    QString path() const { return folder_.filePath(QStringLiteral("socket")); }
    QString configPath() const { return folder_.filePath(QStringLiteral("config")); }

    void listen();
    /// Nobody is there any more.
    void goAway();

    void send(const IpcMessage &message) { sendRaw(encode(message)); }
    void sendRaw(const QByteArray &bytes);
    void sendEvent(Event event, const QByteArray &content);
    void answer(Request request, const QByteArray &content);

    qsizetype connections() const { return connections_; }
    /// The commands that it was given, in order.
    QStringList commands() const;
    QStringList subscriptions() const;
    int asked(Request request) const;

    /// What it says to a command; nothing when it says nothing.
    std::function<std::optional<QByteArray>(const QString &command)> toCommand;
    QByteArray config;
    QByteArray mode = "default";
    QByteArray tree = "{}";
    QList<Request> silentTo;
    QList<IpcMessage> received;

  private:
    void accept();
    void handle(const IpcMessage &message);

    QTemporaryDir folder_;
    std::unique_ptr<QLocalServer> server_;
    QLocalSocket *socket_ = nullptr;
    IpcDecoder decoder_;
    qsizetype connections_ = 0;
};

} // namespace quillmender::sway
