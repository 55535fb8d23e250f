#pragma once

#include "providers/HttpRequest.h"

#include <QByteArray>
#include <QNetworkProxy>

namespace quillmender {

/// The bytes of a request before its body. They ask for the connection to be closed behind the
/// answer, and for an answer that is not compressed.
QByteArray requestHead(const HttpRequest &request);

/// The same for a proxy that passes the request on.
QByteArray requestHeadForProxy(const HttpRequest &request, const QNetworkProxy &proxy);

/// What asks a proxy for a connection to the host of the request.
QByteArray tunnelHead(const HttpRequest &request, const QNetworkProxy &proxy);

/// The port of an http or https address.
quint16 portOf(const QUrl &url);

} // namespace quillmender
