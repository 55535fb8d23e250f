#pragma once

#include "providers/HttpAnswerParser.h"
#include "providers/HttpRequest.h"
#include "providers/HttpResponse.h"

#include <QAbstractSocket>
#include <QNetworkProxy>
#include <QObject>
#include <QTimer>

#include <exception>
#include <memory>

class QTcpSocket;

namespace quillmender {

class HostConnector;

/// One request under way, on a connection of its own, which nothing else can be answered through.
/// The toolkit's manager for HTTP keeps connections, knows only some of the interim statuses, and
/// collects what comes with 401 and 407 without telling anybody or bounding it: hence its sockets
/// are used here, and not the manager.
class HttpExchange : public QObject {
    Q_OBJECT

  public:
    /// Begins at once. `proxy` is one for HTTP, one for SOCKS, or none.
    HttpExchange(HttpRequest request, QNetworkProxy proxy);
    ~HttpExchange() override;

    bool isFinished() const { return isFinished_; }

    /// Once finished: the answer, or throws what it ended with.
    HttpResponse takeResponse();

    void cancel();

  Q_SIGNALS:
    /// Exactly once, never from within the constructor.
    void finished();

  private:
    enum class Stage { connecting, askingProxy, encrypting, exchanging };

    void adoptSocket();
    void askProxy();
    void encrypt();
    void sendRequest();
    void readMore();
    void readProxyAnswer();
    void readAnswer();
    void socketFailed(QAbstractSocket::SocketError error);
    void connectingFailed(QAbstractSocket::SocketError error);
    void complete();
    void runOut();
    void failAtProxy(TransportError::Kind kind);
    void fail(const TransportError &error);
    void finish(std::exception_ptr error);

    bool isSecure() const;
    bool hasHttpProxy() const;
    void write(QByteArray bytes);

    HttpRequest request_;
    QNetworkProxy proxy_;
    std::unique_ptr<HostConnector> connector_;
    std::unique_ptr<QTcpSocket> socket_;
    Stage stage_ = Stage::connecting;
    HttpAnswerParser parser_;
    QTimer timer_;
    QString certificateProblem_;
    HttpResponse response_;
    std::exception_ptr error_;
    bool isFinished_ = false;
};

} // namespace quillmender
