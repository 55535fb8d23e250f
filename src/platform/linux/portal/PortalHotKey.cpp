#include "platform/linux/portal/PortalHotKey.h"

#include "platform/linux/portal/Portal.h"
#include "platform/linux/portal/PortalNames.h"
#include "platform/linux/portal/PortalSession.h"
#include "platform/linux/portal/PortalShortcut.h"

#include <QDBusObjectPath>
#include <QLoggingCategory>
#include <QPointer>

#include <utility>

namespace quillmender::portal {

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.portal", QtWarningMsg)

const QString globalShortcuts = QStringLiteral("GlobalShortcuts");
const QString signalInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString shortcutsKey = QStringLiteral("shortcuts");
const QString id = QStringLiteral("transform");

PortalAnswer failed(const QString &reason) {
    return {PortalAnswer::Outcome::failed, {}, reason};
}

QVariant path(const PortalSession &session) {
    return QVariant::fromValue(QDBusObjectPath(session.path()));
}

PortalQuestion creation(const PortalSession &session) {
    PortalQuestion question{globalShortcuts, QStringLiteral("CreateSession"), {}, {}};
    question.options.insert(QStringLiteral("session_handle_token"), session.token());
    return question;
}

PortalQuestion listing(const PortalSession &session) {
    return {globalShortcuts, QStringLiteral("ListShortcuts"), {path(session)}, {}};
}

PortalQuestion binding(const PortalSession &session, QKeyCombination keys) {
    PortalShortcut shortcut{id, {}};
    shortcut.properties.insert(QStringLiteral("description"),
                               QStringLiteral("Transform Selected Text"));
    shortcut.properties.insert(QStringLiteral("preferred_trigger"), triggerFor(keys));
    return {globalShortcuts,
            QStringLiteral("BindShortcuts"),
            {path(session), QVariant::fromValue(PortalShortcuts{shortcut}), QString()},
            {}};
}

} // namespace

PortalHotKey::PortalHotKey(Portal &portal, QKeyCombination asked, std::function<void()> handler)
    : HeldHotKey(std::move(handler)),
      portal_(portal),
      asked_(asked) {
    registerPortalShortcuts();
    pause_.setSingleShot(true);
    connect(&portal_, &Portal::gone, this, &PortalHotKey::lose);
    connect(&portal_, &Portal::came, this, [this] {
        if (isLost_)
            establishAgain();
    });
    listen();
}

// A desktop may keep a client's keys that went without a word.
PortalHotKey::~PortalHotKey() {
    if (session_)
        session_->closeNow();
}

void PortalHotKey::listen() {
    QDBusConnection bus = portal_.bus();
    bus.connect(service, desktopPath, signalInterface, QStringLiteral("Activated"), this,
                SLOT(handleActivated(QDBusMessage)));
    bus.connect(service, desktopPath, signalInterface, QStringLiteral("Deactivated"), this,
                SLOT(handleDeactivated(QDBusMessage)));
    bus.connect(service, desktopPath, signalInterface, QStringLiteral("ShortcutsChanged"), this,
                SLOT(handleShortcutsChanged(QDBusMessage)));
}

// The object may go while this waits: nothing of it is touched then.
QCoro::Task<PortalAnswer> PortalHotKey::establish() {
    const QPointer self(this);
    const quint64 establishment = ++establishment_;
    const auto isLatest = [self, establishment] {
        return self && self->establishment_ == establishment;
    };
    const QPointer portal(&portal_);
    const QKeyCombination asked = asked_;
    const auto session = std::make_shared<PortalSession>(portal->bus());

    const quint32 version = co_await portal->version(globalShortcuts);
    if (!isLatest())
        co_return failed(QStringLiteral("it was asked for anew meanwhile"));
    if (version == 0)
        co_return failed(QStringLiteral("the portal has no global shortcuts"));
    const PortalAnswer created = co_await portal->ask(creation(*session), Portal::usualLimit);
    if (!isLatest() || !created.isGranted())
        co_return created;
    session->setPath(created.results.value(QStringLiteral("session_handle")).toString());
    session_ = session;
    connect(session.get(), &PortalSession::closed, this, &PortalHotKey::lose);

    // Binding opens a window on some desktops, each time.
    PortalAnswer answer = co_await portal->ask(listing(*session), Portal::usualLimit);
    const bool mustBind =
        answer.isGranted() && !findShortcut(answer.results.value(shortcutsKey), id);
    if (!isLatest())
        co_return answer;
    if (mustBind && isRefused_)
        answer = failed(QStringLiteral("the user has not agreed"));
    else if (mustBind)
        answer = co_await portal->ask(binding(*session, asked), Portal::noLimit);
    if (!isLatest())
        co_return answer;
    // Some portals call it a failure and have bound it all the same.
    if (findShortcut(answer.results.value(shortcutsKey), id)) {
        isLost_ = false;
        take(answer.results.value(shortcutsKey));
        co_return PortalAnswer{PortalAnswer::Outcome::granted, {}, {}};
    }
    isRefused_ = isRefused_ || answer.outcome == PortalAnswer::Outcome::cancelled;
    session_.reset();
    if (answer.isGranted())
        answer = failed(QStringLiteral("the portal has not bound the shortcut"));
    co_return answer;
}

void PortalHotKey::lose() {
    if (!session_)
        return;
    ++establishment_;
    // It may be the session itself that tells.
    session_.reset();
    isLost_ = true;
    gate_.release();
    setHeld(std::nullopt);
    if (pause_.isActive())
        return;
    QTimer::singleShot(1s, this, [this] {
        if (isLost_)
            establishAgain();
    });
    pause_.start(60s);
}

void PortalHotKey::establishAgain() {
    const auto again = [](QPointer<PortalHotKey> self) -> QCoro::Task<> {
        const PortalAnswer answer = co_await self->establish();
        if (!answer.isGranted())
            qCWarning(log, "no hot key: %s", qUtf8Printable(answer.reason));
    };
    again(this);
}

bool PortalHotKey::concernsUs(const QDBusMessage &signal) const {
    const QVariantList arguments = signal.arguments();
    return session_ && !arguments.isEmpty() &&
           arguments[0].value<QDBusObjectPath>().path() == session_->path();
}

void PortalHotKey::handleActivated(const QDBusMessage &signal) {
    if (!concernsUs(signal) || signal.arguments().value(1).toString() != id)
        return;
    if (gate_.isPress())
        press();
}

void PortalHotKey::handleDeactivated(const QDBusMessage &signal) {
    if (concernsUs(signal) && signal.arguments().value(1).toString() == id)
        gate_.release();
}

void PortalHotKey::handleShortcutsChanged(const QDBusMessage &signal) {
    if (concernsUs(signal))
        take(signal.arguments().value(1));
}

void PortalHotKey::take(const QVariant &shortcuts) {
    const std::optional<PortalShortcut> ours = findShortcut(shortcuts, id);
    setHeld(ours ? keysOf(*ours, asked_) : std::nullopt);
}

void PortalHotKey::setHeld(std::optional<QKeyCombination> keys) {
    if (keys == std::exchange(held_, keys))
        return;
    Q_EMIT keysChanged();
}

} // namespace quillmender::portal
