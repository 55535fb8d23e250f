#pragma once

#include <QCoroTask>
#include <QList>
#include <QNetworkProxy>
#include <QUrl>

namespace quillmender {

/// The proxies that the system's settings name for the address. The system may run scripts and
/// look up names for that, so it is asked on a thread of its own, for a few seconds at most; after
/// that, and for this machine itself, the connection is direct.
QCoro::Task<QList<QNetworkProxy>> systemProxies(QUrl url);

} // namespace quillmender
