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
    case TransportError::Kind::proxyFailed:
        return QStringLiteral("The proxy did not let the request to %1 through.");
    case TransportError::Kind::notHttp:
        return QStringLiteral("The answer of %1 is not an HTTP answer.");
    case TransportError::Kind::timedOut:
        return QStringLiteral("The request to %1 timed out.");
    case TransportError::Kind::tooLarge:
        return QStringLiteral("The answer of %1 is too large.");
    }
    return {};
}

QString describe(TransportError::Kind kind, const QUrl &url, const QString &detail) {
    auto text = sentence(kind);
    if (text.contains(QStringLiteral("%1"))) {
        const auto port = url.port() < 0 ? QString() : QStringLiteral(":%1").arg(url.port());
        text = text.arg(url.host() + port);
    }
    return detail.isEmpty() ? text : text + u' ' + detail;
}

TransportError::Kind kindOf(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return TransportError::Kind::hostNotFound;
    case QNetworkReply::TimeoutError:
        return TransportError::Kind::timedOut;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
        return TransportError::Kind::connectionLost;
    case QNetworkReply::SslHandshakeFailedError:
        return TransportError::Kind::insecure;
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolUnknownError:
        return TransportError::Kind::notHttp;
    default:
        break;
    }
    const auto isProxyError = error >= QNetworkReply::ProxyConnectionRefusedError &&
                              error <= QNetworkReply::UnknownProxyError;
    return isProxyError ? TransportError::Kind::proxyFailed
                        : TransportError::Kind::connectionFailed;
}

} // namespace

TransportError::TransportError(Kind kind, const QUrl &url, const QString &detail)
    : DescribedError(describe(kind, url, detail)),
      kind_(kind) {}

TransportError TransportError::from(QNetworkReply::NetworkError error, const QUrl &url,
                                    const QString &detail) {
    return {kindOf(error), url, detail};
}

} // namespace quillmender
