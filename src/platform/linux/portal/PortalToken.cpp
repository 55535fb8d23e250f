#include "platform/linux/portal/PortalToken.h"

#include "platform/linux/portal/PortalNames.h"

#include <QUuid>

namespace quillmender::portal {

QString newToken() {
    return QStringLiteral("quillmender_") + QUuid::createUuid().toString(QUuid::Id128);
}

QString handlePath(const QString &kind, const QDBusConnection &bus, const QString &token) {
    QString sender = bus.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("%1/%2/%3/%4").arg(desktopPath, kind, sender, token);
}

} // namespace quillmender::portal
