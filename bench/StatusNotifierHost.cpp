#include "bench/StatusNotifierHost.h"

#include "desktop/harness/HarnessError.h"

namespace quillmender::bench {

namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

StatusNotifierHost::StatusNotifierHost(const QDBusConnection &bus) : bus_(bus) {
    const bool isUp =
        bus_.registerObject(watcherPath, this,
                            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                                QDBusConnection::ExportAllProperties) &&
        bus_.registerService(watcherName);
    if (!isUp)
        throw harness::HarnessError(QStringLiteral("the desktop has a status area already"));
}

StatusNotifierHost::~StatusNotifierHost() {
    bus_.unregisterService(watcherName);
    bus_.unregisterObject(watcherPath);
}

void StatusNotifierHost::RegisterStatusNotifierItem(const QString &service) {
    lastRegistration_ = std::chrono::steady_clock::now();
    ++registrations_;
    Q_EMIT StatusNotifierItemRegistered(service);
}

} // namespace quillmender::bench
