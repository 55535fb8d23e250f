#include "platform/linux/atspi/FocusMemory.h"

#include <QDBusPendingCallWatcher>

namespace quillmender::atspi {

FocusMemory::FocusMemory(AtspiBus &bus, BusApplications &applications)
    : bus_(bus),
      applications_(applications),
      events_(bus,
              {QStringLiteral("object:state-changed:focused"), QStringLiteral("window:activate")}) {
    connect(&events_, &RegisteredEvents::connected, this, &FocusMemory::subscribe);
}

void FocusMemory::subscribe() {
    clear();
    applications_.clear();
    QDBusConnection connection = bus_.connection();
    connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                       QStringLiteral("StateChanged"), {QStringLiteral("focused")}, QString(), this,
                       SLOT(focusGained(QDBusMessage)));
    connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Window"),
                       QStringLiteral("Activate"), this, SLOT(windowActivated(QDBusMessage)));
}

void FocusMemory::focusGained(const QDBusMessage &event) {
    if (event.arguments().value(1).toInt() == 1)
        remember({event.service(), event.path()});
}

void FocusMemory::windowActivated(const QDBusMessage &event) {
    const ObjectRef frame{event.service(), event.path()};
    const QDBusPendingCall question = applications_.askToolkit(frame.service);
    // No coroutine: nobody would await it, and it could resume after this object has gone.
    const auto *answer = new QDBusPendingCallWatcher(question, this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, frame](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (finished->isError())
                    return;
                const Toolkit toolkit =
                    applications_.learnToolkit(frame.service, finished->reply().arguments());
                if (toolkit == Toolkit::chromium)
                    bus_.post(frame, protocol::accessible, "GetAttributes", {});
            });
}

void FocusMemory::remember(const ObjectRef &object) {
    QList<ObjectRef> &objects = latest_[object.service];
    objects.removeOne(object);
    objects.prepend(object);
    if (objects.size() > objectsPerService)
        objects.removeLast();

    services_.removeOne(object.service);
    services_.prepend(object.service);
    if (services_.size() > maximumServices)
        latest_.remove(services_.takeLast());
}

void FocusMemory::clear() {
    latest_.clear();
    services_.clear();
}

} // namespace quillmender::atspi
