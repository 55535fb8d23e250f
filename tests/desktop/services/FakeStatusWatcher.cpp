#include "desktop/services/FakeStatusWatcher.h"

#include "support/LeaveBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QMutexLocker>
#include <QUuid>

namespace quillmender {

namespace {
const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
} // namespace

bool StatusWatcherObject::hasHost() const {
    const QMutexLocker lock(&mutex_);
    return hasHost_;
}

QStringList StatusWatcherObject::items() const {
    const QMutexLocker lock(&mutex_);
    return items_;
}

void StatusWatcherObject::addHost() {
    {
        const QMutexLocker lock(&mutex_);
        hasHost_ = true;
    }
    Q_EMIT StatusNotifierHostRegistered();
}

void StatusWatcherObject::RegisterStatusNotifierItem(const QString &service) {
    {
        const QMutexLocker lock(&mutex_);
        items_.append(service);
    }
    Q_EMIT StatusNotifierItemRegistered(service);
}

FakeStatusWatcher::FakeStatusWatcher(bool hasHost, const QString &busAddress)
    : object_(new StatusWatcherObject(hasHost)),
      connectionName_(QUuid::createUuid().toString()) {
    object_->moveToThread(&thread_);
    QObject::connect(&thread_, &QThread::finished, object_, &QObject::deleteLater);
    thread_.start();
    QMetaObject::invokeMethod(
        object_,
        [this, busAddress] {
            QDBusConnection bus =
                busAddress.isEmpty()
                    ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_)
                    : QDBusConnection::connectToBus(busAddress, connectionName_);
            bus.registerObject(watcherPath, object_, QDBusConnection::ExportAllContents);
            bus.registerService(watcherName);
        },
        Qt::BlockingQueuedConnection);
}

FakeStatusWatcher::~FakeStatusWatcher() {
    QMetaObject::invokeMethod(
        object_, [this] { test::leaveBus(object_, watcherPath, QDBusConnection(connectionName_)); },
        Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void FakeStatusWatcher::addHost() {
    QMetaObject::invokeMethod(object_, &StatusWatcherObject::addHost);
}

} // namespace quillmender
