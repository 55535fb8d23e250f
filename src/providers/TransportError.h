#pragma once

#include "model/UserVisibleError.h"

#include <QAbstractSocket>
#include <QNetworkProxy>
#include <QUrl>

namespace quillmender {

/// A request that brought no whole answer. The description is short and names hosts at most:
/// neither path nor query nor header, since they may hold a key.
class TransportError : public UserVisibleError {
  public:
    enum class Kind {
        unsupportedScheme,
        invalidHeader,
        hostNotFound,
        connectionFailed,
        connectionLost,
        insecure,
        proxyUnreachable,
        proxyTimedOut,
        proxyFailed,
        notHttp,
        timedOut,
        tooLarge,
    };

    /// `detail` is a reason to be told, if there is one.
    TransportError(Kind kind, const QUrl &url, const QString &detail = {});

    /// Why no connection came about.
    static TransportError from(QAbstractSocket::SocketError error, const QUrl &url);

    /// One of the kinds that a proxy caused, which is named as well.
    static TransportError atProxy(Kind kind, const QUrl &url, const QNetworkProxy &proxy,
                                  const QString &detail = {});

    Kind kind() const { return kind_; }

  private:
    TransportError(Kind kind, const QString &description);

    Kind kind_;
};

} // namespace quillmender
