#pragma once

#include <QCoreApplication>
#include <QDBusConnection>

namespace quillmender::test {

/// Ends a fake service with its connection. What was called and is not answered yet would otherwise
/// be refused in the name of a connection that has gone by then, with a fault.
inline void leaveBus(QObject *service, const QString &path, QDBusConnection bus) {
    bus.unregisterObject(path, QDBusConnection::UnregisterTree);
    QCoreApplication::removePostedEvents(service);
    QDBusConnection::disconnectFromBus(bus.name());
}

} // namespace quillmender::test
