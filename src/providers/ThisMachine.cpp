#include "providers/ThisMachine.h"

#include <QHostAddress>
#include <QHostInfo>
#include <QNetworkInterface>
#include <QStringList>

namespace quillmender {

namespace {

bool isNumberOfThisMachine(const QHostAddress &address) {
    bool isShort = false;
    const bool isAny = address.toIPv4Address(&isShort) == 0 && isShort;
    return isAny || address.isLoopback() || address == QHostAddress(QHostAddress::AnyIPv6) ||
           QNetworkInterface::allAddresses().contains(address);
}

bool isUsualName(const QString &name) {
    static const QStringList names{QStringLiteral("localhost"),
                                   QStringLiteral("localhost.localdomain"),
                                   QStringLiteral("localhost4"),
                                   QStringLiteral("localhost6"),
                                   QStringLiteral("localhost4.localdomain4"),
                                   QStringLiteral("localhost6.localdomain6"),
                                   QStringLiteral("ip6-localhost"),
                                   QStringLiteral("ip6-loopback")};
    return names.contains(name) || name.endsWith(QStringLiteral(".localhost"));
}

/// Its name alone, with its domain, and as local networks announce it.
bool isOwnName(const QString &name) {
    const QString own = QHostInfo::localHostName().toLower();
    if (own.isEmpty())
        return false;
    const QString first = own.section(u'.', 0, 0);
    const QString domain = QHostInfo::localDomainName().toLower();
    return name == own || name == first || name == first + QStringLiteral(".local") ||
           (!domain.isEmpty() && name == first + u'.' + domain);
}

} // namespace

bool isThisMachine(const QString &host) {
    QString name = host.toLower();
    if (name.endsWith(u'.'))
        name.chop(1);
    const QHostAddress number(name);
    if (!number.isNull())
        return isNumberOfThisMachine(number);
    return isUsualName(name) || isOwnName(name);
}

} // namespace quillmender
