#include "platform/linux/atspi/RegisteredEvents.h"

#include <utility>

namespace quillmender::atspi {

RegisteredEvents::RegisteredEvents(AtspiBus &bus, QStringList events)
    : bus_(bus),
      events_(std::move(events)) {
    connect(&bus_, &AtspiBus::connected, this, &RegisteredEvents::enlist);
}

void RegisteredEvents::enlist() {
    // A registry that has died is started by the next message to it; what it was told is lost.
    const QString noOwner = QStringLiteral("");
    QDBusConnection connection = bus_.connection();
    connection.connect(QStringLiteral("org.freedesktop.DBus"), QString(),
                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"),
                       {QLatin1String(protocol::registry), QString(), noOwner}, QString(), this,
                       SLOT(enlistAgain()));
    Q_EMIT connected();
    enlistAgain();
}

void RegisteredEvents::enlistAgain() {
    const ObjectRef registry{QLatin1String(protocol::registry),
                             QStringLiteral("/org/a11y/atspi/registry")};
    for (const QString &event : std::as_const(events_))
        bus_.post(registry, protocol::registry, "RegisterEvent", {event});
}

} // namespace quillmender::atspi
