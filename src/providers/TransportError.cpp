#include "providers/TransportError.h"

namespace quillmender {

namespace {

QString sentence(TransportError::Kind kind) {
    switch (kind) {
    case TransportError::Kind::unsupportedScheme:
        return QStringLiteral("Only http and https addresses can be reached.");
    case TransportError::Kind::invalidHeader:
        return QStringLiteral("The API key holds a character that cannot be sent.");
    case TransportError::Kind::hostNotFound:
        return QStringLiteral("The host %1 was not found.");
    case TransportError::Kind::connectionFailed:
        return QStringLiteral("No connection to %1 could be made.");
    case TransportError::Kind::connectionLost:
        return QStringLiteral("The connection to %1 was lost before the answer was complete.");
    case TransportError::Kind::insecure:
        return QStringLiteral("No secure connection to %1 could be made.");
    case TransportError::Kind::proxyUnreachable:
        return QStringLiteral("No connection to the proxy %2 could be made.");
    case TransportError::Kind::proxyTimedOut:
        return QStringLiteral("The request to %1 timed out at the proxy %2.");
    case TransportError::Kind::proxyFailed:
        return QStringLiteral("The request to %1 failed at the proxy %2.");
    case TransportError::Kind::notHttp:
        return QStringLiteral("The answer of %1 is not an HTTP answer.");
    case TransportError::Kind::timedOut:
        return QStringLiteral("The request to %1 timed out.");
    case TransportError::Kind::tooLarge:
        return QStringLiteral("The answer of %1 is too large.");
    }
    return {};
}

QString named(const QString &host, int port) {
    return port < 0 ? host : QStringLiteral("%1:%2").arg(host).arg(port);
}

QString describe(TransportError::Kind kind, const QUrl &url, const QString &proxy,
                 const QString &detail) {
    // Hosts can be as long as whoever named them wants.
    constexpr qsizetype longestPart = 300;
    auto text = sentence(kind);
    text.replace(QStringLiteral("%2"), proxy.left(longestPart));
    text.replace(QStringLiteral("%1"), named(url.host(), url.port()).left(longestPart));
    return detail.isEmpty() ? text : text + u' ' + detail.left(longestPart);
}

TransportError::Kind kindOf(QAbstractSocket::SocketError error) {
    switch (error) {
    case QAbstractSocket::HostNotFoundError:
        return TransportError::Kind::hostNotFound;
    case QAbstractSocket::SocketTimeoutError:
        return TransportError::Kind::timedOut;
    case QAbstractSocket::RemoteHostClosedError:
        return TransportError::Kind::connectionLost;
    default:
        return TransportError::Kind::connectionFailed;
    }
}

} // namespace

TransportError::TransportError(Kind kind, const QUrl &url, const QString &detail)
    : TransportError(kind, describe(kind, url, {}, detail)) {}

TransportError::TransportError(Kind kind, const QString &description)
    : UserVisibleError(description),
      kind_(kind) {}

TransportError TransportError::from(QAbstractSocket::SocketError error, const QUrl &url) {
    return {kindOf(error), url};
}

TransportError TransportError::atProxy(Kind kind, const QUrl &url, const QNetworkProxy &proxy,
                                       const QString &detail) {
    return {kind, describe(kind, url, named(proxy.hostName(), proxy.port()), detail)};
}

} // namespace quillmender
