#pragma once

#include <QDBusConnection>
#include <QString>

namespace quillmender::portal {

/// A name for a request or a session that nobody can guess, and that is never used again.
QString newToken();

/// Where the portal puts the request or the session of that name: `kind` is "request" or "session".
QString handlePath(const QString &kind, const QDBusConnection &bus, const QString &token);

} // namespace quillmender::portal
