#pragma once

#include <QAbstractSocket>
#include <QHostAddress>
#include <QHostInfo>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

class QTcpSocket;

namespace quillmender {

/// Opens one connection to a host. All its addresses are tried, both families in turn, each a
/// moment after the one before, and the first that answers is taken: an address that leads nowhere
/// costs a quarter of a second. What the socket has read and nobody has taken is bounded.
class HostConnector : public QObject {
    Q_OBJECT

  public:
    enum class Kind { plain, tls };

    /// `proxy` is a SOCKS proxy that finds the host itself, or none. With `tls` the socket can be
    /// encrypted once it is connected.
    HostConnector(const QString &host, quint16 port, Kind kind, const QNetworkProxy &proxy);
    ~HostConnector() override;

    /// Once connected.
    std::unique_ptr<QTcpSocket> takeSocket();

  Q_SIGNALS:
    /// One of the two, once, and never from within the constructor or a socket.
    void connected();
    void failed(QAbstractSocket::SocketError error);

  private:
    void lookedUp(const QHostInfo &host);
    void tryNext();
    QTcpSocket &addAttempt();
    void attemptConnected(QTcpSocket *socket);
    void attemptFailed(QTcpSocket *socket, QAbstractSocket::SocketError error);

    quint16 port_;
    Kind kind_;
    QNetworkProxy proxy_;
    QList<QHostAddress> addresses_; ///< those that were not tried yet
    std::vector<std::unique_ptr<QTcpSocket>> attempts_;
    std::unique_ptr<QTcpSocket> winner_;
    QTimer patience_;
    int lookup_ = -1;
};

} // namespace quillmender
