#include "platform/linux/atspi/FocusMemory.h"

#include <QDBusPendingCallWatcher>

#include <utility>

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
    // What the bus before has yet to say is of other programs: each bus names them from the start.
    qDeleteAll(findChildren<QDBusPendingCallWatcher *>());
    applications_.clear();
    QDBusConnection connection = bus_.connection();
    connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                       QStringLiteral("StateChanged"), {QStringLiteral("focused")}, QString(), this,
                       SLOT(focusGained(QDBusMessage)));
    connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Window"),
                       QStringLiteral("Activate"), this, SLOT(windowActivated(QDBusMessage)));
}

void FocusMemory::focusGained(const QDBusMessage &event) {
    if (event.arguments().value(1).toInt() != 1)
        return;
    remember({event.service(), event.path()});
    learnProcess(event.service());
}

void FocusMemory::windowActivated(const QDBusMessage &event) {
    const ObjectRef frame{event.service(), event.path()};
    learnProcess(frame.service);
    await(applications_.askToolkit(frame.service), [this, frame](const QVariantList &answer) {
        if (applications_.learnToolkit(frame.service, answer) == Toolkit::chromium)
            bus_.post(frame, protocol::accessible, "GetAttributes", {});
    });
}

void FocusMemory::learnProcess(const QString &service) {
    if (applications_.knownProcess(service) != 0)
        return;
    await(applications_.askProcess(service), [this, service](const QVariantList &answer) {
        applications_.learnProcess(service, answer);
    });
}

// No coroutine: nobody would await it, and it could resume after this object has gone.
void FocusMemory::await(const QDBusPendingCall &question,
                        std::function<void(const QVariantList &)> learn) {
    const auto *watcher = new QDBusPendingCallWatcher(question, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [learn = std::move(learn)](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (!finished->isError())
                    learn(finished->reply().arguments());
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
