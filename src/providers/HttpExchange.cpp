#include "providers/HttpExchange.h"

#include "model/Wiping.h"
#include "platform/Clock.h"
#include "providers/HostConnector.h"
#include "providers/HttpRequestHead.h"

#include <QSslError>
#include <QSslSocket>

namespace quillmender {

namespace {

constexpr int proxyAuthenticationRequired = 407;

bool isHttpProxy(const QNetworkProxy &proxy) {
    return proxy.type() == QNetworkProxy::HttpProxy ||
           proxy.type() == QNetworkProxy::HttpCachingProxy;
}

bool isSocksProxy(const QNetworkProxy &proxy) {
    return proxy.type() == QNetworkProxy::Socks5Proxy;
}

} // namespace

HttpExchange::HttpExchange(HttpRequest request, QNetworkProxy proxy)
    : request_(std::move(request)),
      proxy_(std::move(proxy)),
      parser_(request_.largestAnswer) {
    const QString host = hasHttpProxy() ? proxy_.hostName() : request_.url.host(QUrl::FullyEncoded);
    connector_ = std::make_unique<HostConnector>(
        host, hasHttpProxy() ? proxy_.port() : portOf(request_.url),
        isSecure() ? HostConnector::Kind::tls : HostConnector::Kind::plain,
        isSocksProxy(proxy_) ? proxy_ : QNetworkProxy(QNetworkProxy::NoProxy));
    // Queued, as all that comes from sockets: what follows may delete what has sent it.
    connect(connector_.get(), &HostConnector::connected, this, &HttpExchange::adoptSocket,
            Qt::QueuedConnection);
    connect(connector_.get(), &HostConnector::failed, this, &HttpExchange::socketFailed,
            Qt::QueuedConnection);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &HttpExchange::runOut);
    timer_.start(request_.timeout);
}

HttpExchange::~HttpExchange() = default;

HttpResponse HttpExchange::takeResponse() {
    if (error_)
        std::rethrow_exception(error_);
    return std::move(response_);
}

void HttpExchange::cancel() {
    finish(std::make_exception_ptr(CancellationError()));
}

void HttpExchange::adoptSocket() {
    if (isFinished_)
        return;
    socket_ = connector_->takeSocket();
    connect(socket_.get(), &QTcpSocket::readyRead, this, &HttpExchange::readMore,
            Qt::QueuedConnection);
    connect(socket_.get(), &QTcpSocket::errorOccurred, this, &HttpExchange::socketFailed,
            Qt::QueuedConnection);
    if (hasHttpProxy() && isSecure())
        askProxy();
    else if (isSecure())
        encrypt();
    else
        sendRequest();
    // It may have ended before anybody listened.
    if (socket_ && socket_->state() != QAbstractSocket::ConnectedState)
        socketFailed(QAbstractSocket::RemoteHostClosedError);
}

void HttpExchange::askProxy() {
    stage_ = Stage::askingProxy;
    parser_ = HttpAnswerParser(0, HttpAnswerParser::Body::absent);
    write(tunnelHead(request_, proxy_));
}

void HttpExchange::encrypt() {
    stage_ = Stage::encrypting;
    auto *secure = qobject_cast<QSslSocket *>(socket_.get());
    connect(secure, &QSslSocket::encrypted, this, &HttpExchange::sendRequest, Qt::QueuedConnection);
    connect(secure, &QSslSocket::sslErrors, this, [this](const QList<QSslError> &errors) {
        if (!errors.isEmpty())
            certificateProblem_ = errors.first().errorString();
    });
    secure->setPeerVerifyName(request_.url.host(QUrl::FullyEncoded));
    secure->startClientEncryption();
}

void HttpExchange::sendRequest() {
    if (isFinished_)
        return;
    stage_ = Stage::exchanging;
    parser_ = HttpAnswerParser(request_.largestAnswer);
    write(hasHttpProxy() && !isSecure() ? requestHeadForProxy(request_, proxy_)
                                        : requestHead(request_));
    if (!request_.body.isEmpty())
        socket_->write(request_.body);
    readMore();
}

void HttpExchange::readMore() {
    if (isFinished_)
        return;
    if (stage_ == Stage::askingProxy)
        readProxyAnswer();
    else if (stage_ == Stage::exchanging)
        readAnswer();
}

void HttpExchange::readProxyAnswer() {
    const QByteArray bytes = socket_->readAll();
    const qsizetype used = parser_.feed(bytes);
    if (!parser_.isOver())
        return;
    // A host speaks only after it has been spoken to: what comes with the answer is not from there.
    const bool isOpen = !parser_.problem() && parser_.status() < 300 && used == bytes.size() &&
                        socket_->bytesAvailable() == 0;
    if (isOpen)
        encrypt();
    else
        failAtProxy(TransportError::Kind::proxyFailed);
}

void HttpExchange::readAnswer() {
    while (!parser_.isOver() && socket_->bytesAvailable() > 0)
        parser_.feed(socket_->readAll());
    if (parser_.isOver())
        complete();
}

void HttpExchange::socketFailed(QAbstractSocket::SocketError error) {
    if (isFinished_)
        return;
    readMore();
    if (isFinished_)
        return;
    switch (stage_) {
    case Stage::connecting:
        connectingFailed(error);
        return;
    case Stage::askingProxy:
        failAtProxy(TransportError::Kind::proxyFailed);
        return;
    case Stage::encrypting:
        fail({TransportError::Kind::insecure, request_.url, certificateProblem_});
        return;
    case Stage::exchanging:
        if (error == QAbstractSocket::RemoteHostClosedError)
            parser_.end();
        complete();
        return;
    }
}

void HttpExchange::connectingFailed(QAbstractSocket::SocketError error) {
    const bool isBehindProxy = isSocksProxy(proxy_) &&
                               error != QAbstractSocket::ProxyConnectionRefusedError &&
                               error != QAbstractSocket::ProxyConnectionTimeoutError &&
                               error != QAbstractSocket::ProxyNotFoundError;
    if (isBehindProxy)
        failAtProxy(TransportError::Kind::proxyFailed);
    else if (hasHttpProxy() || isSocksProxy(proxy_))
        failAtProxy(TransportError::Kind::proxyUnreachable);
    else
        fail(TransportError::from(error, request_.url));
}

void HttpExchange::complete() {
    const bool isWithProxy = hasHttpProxy() && !isSecure();
    if (isWithProxy && parser_.status() == proxyAuthenticationRequired) {
        failAtProxy(TransportError::Kind::proxyFailed);
        return;
    }
    if (!parser_.isOver() || parser_.problem()) {
        const auto problem = parser_.problem().value_or(TransportError::Kind::connectionLost);
        if (isWithProxy && problem != TransportError::Kind::tooLarge)
            failAtProxy(TransportError::Kind::proxyFailed);
        else
            fail({problem, request_.url});
        return;
    }
    response_.status = parser_.status();
    response_.body = parser_.takeBody();
    if (parser_.status() / 100 == 3)
        response_.redirectTarget = QUrl::fromEncoded(parser_.location());
    finish(nullptr);
}

void HttpExchange::runOut() {
    const bool isAtProxy =
        stage_ == Stage::askingProxy ||
        (stage_ == Stage::connecting && (hasHttpProxy() || isSocksProxy(proxy_)));
    if (isAtProxy)
        failAtProxy(TransportError::Kind::proxyTimedOut);
    else
        fail({TransportError::Kind::timedOut, request_.url});
}

void HttpExchange::failAtProxy(TransportError::Kind kind) {
    const bool hasAnswered = parser_.isOver() && !parser_.problem();
    fail(TransportError::atProxy(
        kind, request_.url, proxy_,
        hasAnswered ? QStringLiteral("Its answer was %1.").arg(parser_.status()) : QString()));
}

void HttpExchange::fail(const TransportError &error) {
    finish(std::make_exception_ptr(error));
}

void HttpExchange::finish(std::exception_ptr error) {
    if (isFinished_)
        return;
    isFinished_ = true;
    error_ = std::move(error);
    timer_.stop();
    connector_.reset();
    socket_.reset();
    Q_EMIT finished();
}

bool HttpExchange::isSecure() const {
    return request_.url.scheme() == QStringLiteral("https");
}

bool HttpExchange::hasHttpProxy() const {
    return isHttpProxy(proxy_);
}

void HttpExchange::write(QByteArray bytes) {
    socket_->write(bytes.constData(), bytes.size());
    wipe(bytes);
}

} // namespace quillmender
