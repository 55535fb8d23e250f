#pragma once

#include "platform/linux/wayland/sway/IpcMessage.h"
#include "platform/linux/wayland/sway/IpcQuestion.h"

#include <QCoroTask>
#include <QJsonObject>
#include <QLocalSocket>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

namespace quillmender::sway {

/// What can be asked of the compositor.
enum class Request : quint32 {
    runCommand = 0,
    subscribe = 2,
    getTree = 4,
    getVersion = 7,
    getConfig = 9,
    getBindingState = 12,
};

/// What it says by itself.
enum class Event : quint32 {
    workspace = IpcMessage::eventBit,
    mode = IpcMessage::eventBit | 2,
    window = IpcMessage::eventBit | 3,
    binding = IpcMessage::eventBit | 5,
    shutdown = IpcMessage::eventBit | 6,
};

/// The compositor's socket of the i3 protocol. When the connection ends while the program goes on,
/// it is made again, at first at once and then more and more rarely. A compositor that breaks the
/// protocol, with garbage, an answer that nobody asked for, or one without end, ends the connection
/// and nothing else.
class SwayIpc : public QObject {
    Q_OBJECT

  public:
    explicit SwayIpc(QString socketPath);
    ~SwayIpc() override;

    /// The session's own; null when there is none, or nobody listens there.
    static std::unique_ptr<SwayIpc> open();

    bool isConnected() const { return socket_ != nullptr; }

    /// The answer; absent when the compositor does not give one within the limit, or is not there.
    /// One that comes later is for nobody.
    QCoro::Task<std::optional<QJsonDocument>> ask(Request request, QByteArray payload,
                                                  std::chrono::milliseconds limit);

    /// The same for who has to know what came before and what after the answer: it ends in the
    /// order of the events. Null when the compositor is not there, or answers nothing any more.
    std::shared_ptr<IpcQuestion> start(Request request, const QByteArray &payload);

    /// Sends a request without asking for its outcome; on its way when this returns.
    void post(Request request, const QByteArray &payload);

    /// Has the compositor tell of these events too, by the protocol's names of them, on this
    /// connection and each later one.
    void subscribe(const QStringList &events);

  Q_SIGNALS:
    void eventReceived(quillmender::sway::Event event, const QJsonObject &content);

    /// A connection stands, or stands again; what was subscribed to has been asked for anew.
    void connected();
    void lost();

  private:
    void connectToCompositor();
    void receive();
    void take(const IpcMessage &message);
    void takeAnswer(const IpcMessage &message);
    void endConnection(const char *reason);
    void tryAgainLater();
    void sendSubscription(const QStringList &events);

    QString path_;
    std::unique_ptr<QLocalSocket> socket_; ///< null while there is no connection
    IpcDecoder decoder_;
    std::deque<std::shared_ptr<IpcQuestion>> questions_; ///< in the order of their answers
    QStringList subscribed_;
    static constexpr std::chrono::milliseconds firstPause{50};
    std::chrono::milliseconds pause_ = firstPause; ///< before the connection is made again
    QTimer again_;
};

} // namespace quillmender::sway
