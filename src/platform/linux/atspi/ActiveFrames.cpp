#include "platform/linux/atspi/ActiveFrames.h"

#include "platform/linux/atspi/Decoding.h"
#include "platform/linux/atspi/FrameSearch.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace quillmender::atspi {

namespace {

constexpr int limitMilliseconds = static_cast<int>(CallBudget::perCall.count());

QDBusMessage processQuestion(const QString &service) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    question << service;
    return question;
}

QDBusMessage nameQuestion(const ObjectRef &object) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        object.service, object.path, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    question << QLatin1String(protocol::accessible) << QStringLiteral("Name");
    question.setAutoStartService(false);
    return question;
}

QDBusMessage stateQuestion(const ObjectRef &object) {
    QDBusMessage question = QDBusMessage::createMethodCall(object.service, object.path,
                                                           QLatin1String(protocol::accessible),
                                                           QStringLiteral("GetState"));
    question.setAutoStartService(false);
    return question;
}

ObjectRef sourceOf(const QDBusMessage &event) {
    return {event.service(), event.path()};
}

} // namespace

ActiveFrames::ActiveFrames(AtspiBus &bus)
    : bus_(bus),
      events_(bus, {QStringLiteral("window:activate"), QStringLiteral("window:deactivate")}) {
    applicationWatch_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&applicationWatch_, &QDBusServiceWatcher::serviceUnregistered, this,
            &ActiveFrames::forget);
    connect(&events_, &RegisteredEvents::connected, this, &ActiveFrames::subscribe);
}

void ActiveFrames::subscribe() {
    forget();
    QDBusConnection connection = bus_.connection();
    applicationWatch_.setConnection(connection);
    const auto listen = [&](const char *event, const char *slot) {
        connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Window"),
                           QLatin1String(event), this, slot);
    };
    listen("Activate", SLOT(windowActivated(QDBusMessage)));
    listen("Deactivate", SLOT(windowDeactivated(QDBusMessage)));
    lookAround(this);
}

// What was active before anybody listened, unless somebody has told of it meanwhile.
QCoro::Task<> ActiveFrames::lookAround(QPointer<ActiveFrames> self) {
    const quint64 news = self->news_;
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    const auto applications = std::make_shared<BusApplications>(self->bus_);
    const QList<OwnedFrame> active = co_await findActiveFrames(self->bus_, applications, budget);
    // Two that both say so: one of them has not heard yet, and nobody knows which.
    if (self && self->news_ == news && active.size() == 1)
        self->adopt(active.constFirst().object, active.constFirst().processId);
}

void ActiveFrames::windowActivated(const QDBusMessage &event) {
    const ObjectRef frame = sourceOf(event);
    const quint64 news = ++news_;
    candidate_ = frame;
    // No coroutine: nobody would await it, and it could resume after this object has gone.
    const auto *answer = new QDBusPendingCallWatcher(
        bus_.connection().asyncCall(processQuestion(frame.service), limitMilliseconds), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, frame, news](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (finished->isError() || news != news_)
                    return;
                candidate_ = {};
                const int process = intValue(finished->reply().arguments()).value_or(0);
                if (process > 0)
                    adopt(frame, process);
            });
}

void ActiveFrames::windowDeactivated(const QDBusMessage &event) {
    const ObjectRef frame = sourceOf(event);
    // It comes late where the next window has told first.
    if (frame == candidate_) {
        ++news_;
        candidate_ = {};
    }
    if (frame != frame_)
        return;
    if (std::exchange(isActive_, false))
        Q_EMIT changed();
}

void ActiveFrames::adopt(const ObjectRef &frame, qint64 process) {
    // The window before it is not active any more, whether it has told or not.
    if (process == QCoreApplication::applicationPid()) {
        if (std::exchange(isActive_, false))
            Q_EMIT changed();
        seeWhetherItIsThere();
        return;
    }
    const bool isNew = frame != frame_;
    frame_ = frame;
    isActive_ = true;
    if (isNew) {
        applicationWatch_.setWatchedServices({frame.service});
        latest_ = FrontWindow{(frame.service + frame.path).toUtf8(), process, {}, {}};
    }
    Q_EMIT changed();
    askName(frame, &FrontWindow::title);
    if (isNew)
        askName({frame.service, QLatin1String(protocol::rootPath)}, &FrontWindow::application);
}

// A window that is closed with ours behind it goes without a word: nobody else becomes active.
void ActiveFrames::seeWhetherItIsThere() {
    if (!latest_)
        return;
    const auto *answer = new QDBusPendingCallWatcher(
        bus_.connection().asyncCall(stateQuestion(frame_), limitMilliseconds), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, frame = frame_](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusError::ErrorType error = finished->error().type();
                // One that hangs is there.
                if (frame != frame_ || error == QDBusError::NoReply ||
                    error == QDBusError::Timeout || error == QDBusError::TimedOut)
                    return;
                const QVariant states =
                    finished->isError() ? QVariant() : firstValue(finished->reply().arguments());
                if (!decodeStates(states).has(State::visible))
                    forget();
            });
}

void ActiveFrames::askName(const ObjectRef &object, QString FrontWindow::*name) {
    const auto *answer = new QDBusPendingCallWatcher(
        bus_.connection().asyncCall(nameQuestion(object), limitMilliseconds), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, frame = frame_, name](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (!finished->isError() && latest_ && frame == frame_)
                    (*latest_).*name = firstValue(finished->reply().arguments()).toString();
            });
}

void ActiveFrames::forget() {
    ++news_;
    candidate_ = {};
    frame_ = {};
    isActive_ = false;
    if (std::exchange(latest_, std::nullopt))
        Q_EMIT changed();
}

} // namespace quillmender::atspi
