#include "providers/HostConnector.h"

#include <QPointer>
#include <QSslSocket>
#include <QTcpSocket>

#include <algorithm>

namespace quillmender {

namespace {

constexpr std::chrono::milliseconds patienceWithOne{250};
constexpr qsizetype mostAddresses = 8;
constexpr qint64 readBufferSize = qint64{256} * 1024;

/// The families in turn, beginning with the one that the system puts first.
QList<QHostAddress> inTurn(const QList<QHostAddress> &addresses) {
    QList<QHostAddress> first;
    QList<QHostAddress> second;
    for (const auto &address : addresses)
        (address.protocol() == addresses.first().protocol() ? first : second).append(address);
    QList<QHostAddress> mixed;
    for (qsizetype i = 0; i < std::max(first.size(), second.size()); ++i)
        mixed += first.mid(i, 1) + second.mid(i, 1);
    return mixed.first(std::min(mixed.size(), mostAddresses));
}

} // namespace

HostConnector::HostConnector(const QString &host, quint16 port, Kind kind,
                             const QNetworkProxy &proxy)
    : port_(port),
      kind_(kind),
      proxy_(proxy) {
    patience_.setSingleShot(true);
    patience_.setInterval(patienceWithOne);
    connect(&patience_, &QTimer::timeout, this, &HostConnector::tryNext);
    if (proxy.type() == QNetworkProxy::NoProxy) {
        lookup_ = QHostInfo::lookupHost(host, this, &HostConnector::lookedUp);
        return;
    }
    addAttempt().connectToHost(host, port);
}

HostConnector::~HostConnector() {
    if (lookup_ >= 0)
        QHostInfo::abortHostLookup(lookup_);
}

std::unique_ptr<QTcpSocket> HostConnector::takeSocket() {
    return std::move(winner_);
}

void HostConnector::lookedUp(const QHostInfo &host) {
    lookup_ = -1;
    if (host.addresses().isEmpty()) {
        Q_EMIT failed(QAbstractSocket::HostNotFoundError);
        return;
    }
    addresses_ = inTurn(host.addresses());
    tryNext();
}

void HostConnector::tryNext() {
    if (addresses_.isEmpty())
        return;
    addAttempt().connectToHost(addresses_.takeFirst(), port_);
    if (!addresses_.isEmpty())
        patience_.start();
}

QTcpSocket &HostConnector::addAttempt() {
    if (kind_ == Kind::tls)
        attempts_.push_back(std::make_unique<QSslSocket>());
    else
        attempts_.push_back(std::make_unique<QTcpSocket>());
    QTcpSocket &socket = *attempts_.back();
    socket.setProxy(proxy_);
    // A full buffer stops the socket from reading, however late it is emptied.
    socket.setReadBufferSize(readBufferSize);
    // Queued: a socket may be deleted by what follows, and must not be at work then.
    const QPointer attempt(&socket);
    connect(
        &socket, &QTcpSocket::connected, this, [this, attempt] { attemptConnected(attempt); },
        Qt::QueuedConnection);
    connect(
        &socket, &QTcpSocket::errorOccurred, this,
        [this, attempt](QAbstractSocket::SocketError error) { attemptFailed(attempt, error); },
        Qt::QueuedConnection);
    return socket;
}

void HostConnector::attemptConnected(QTcpSocket *socket) {
    const auto found = std::ranges::find(attempts_, socket, &std::unique_ptr<QTcpSocket>::get);
    if (winner_ || found == attempts_.end())
        return;
    patience_.stop();
    addresses_.clear();
    winner_ = std::move(*found);
    winner_->disconnect(this);
    attempts_.clear();
    Q_EMIT connected();
}

void HostConnector::attemptFailed(QTcpSocket *socket, QAbstractSocket::SocketError error) {
    const auto found = std::ranges::find(attempts_, socket, &std::unique_ptr<QTcpSocket>::get);
    if (winner_ || found == attempts_.end())
        return;
    attempts_.erase(found);
    if (!addresses_.isEmpty())
        tryNext();
    else if (attempts_.empty())
        Q_EMIT failed(error);
}

} // namespace quillmender
