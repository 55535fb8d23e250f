#pragma once

#include "model/DescribedError.h"

#include <QNetworkReply>
#include <QUrl>

namespace quillmender {

/// A request that brought no whole answer. The description names the host at most: neither path
/// nor query nor header, since they may hold a key.
class TransportError : public DescribedError {
  public:
    enum class Kind {
        unsupportedScheme,
        invalidHeader,
        hostNotFound,
        connectionFailed,
        connectionLost,
        insecure,
        proxyFailed,
        notHttp,
        timedOut,
        tooLarge,
    };

    /// `detail` is a reason to be told, if there is one.
    TransportError(Kind kind, const QUrl &url, const QString &detail = {});

    /// What the network layer reported.
    static TransportError from(QNetworkReply::NetworkError error, const QUrl &url,
                               const QString &detail = {});

    Kind kind() const { return kind_; }

  private:
    Kind kind_;
};

} // namespace quillmender
