#include "platform/linux/portal/RemoteDesktopKeys.h"

#include "platform/linux/portal/Portal.h"
#include "platform/linux/portal/PortalSession.h"
#include "platform/linux/portal/TokenStore.h"
#include "platform/linux/wayland/kwin/HeldModifiers.h"

#include <QCoroDBusPendingCall>
#include <QDBusObjectPath>
#include <QPointer>

#include <array>
#include <utility>

namespace quillmender::portal {

namespace {

const QString remoteDesktop = QStringLiteral("RemoteDesktop");
constexpr quint32 keyboard = 1;
constexpr quint32 untilRevoked = 2; // how long the user's word lasts
constexpr int keyMilliseconds = 1000;

QVariant path(const PortalSession &session) {
    return QVariant::fromValue(QDBusObjectPath(session.path()));
}

wayland::TypedOutcome withheld(const QString &reason) {
    return {false, false, reason};
}

wayland::TypedOutcome unavailable(const QString &reason) {
    return {false, true, reason};
}

QDBusPendingCall sendKey(const QDBusConnection &bus, const PortalSession &session, quint32 code,
                         bool isDown) {
    QDBusMessage key =
        Portal::call(remoteDesktop, QStringLiteral("NotifyKeyboardKeycode"),
                     {path(session), QVariantMap(), static_cast<int>(code), quint32{isDown}});
    // A portal that is started for it knows nothing of the session.
    key.setAutoStartService(false);
    return bus.asyncCall(key, keyMilliseconds);
}

/// Whether the first key went down. The portal attends to calls side by side: a key that is sent
/// before the one ahead of it was answered may overtake it, and a letter without its modifier would
/// be typed into the text.
QCoro::Task<std::optional<QString>> press(QDBusConnection bus, const PortalSession &session,
                                          kwin::ChordCodes codes) {
    QDBusPendingCall first = sendKey(bus, session, codes.modifier, true);
    const QDBusMessage begun = co_await first;
    // One that is late may type it all the same.
    const bool isLate = first.error().type() == QDBusError::NoReply;
    if (begun.type() == QDBusMessage::ErrorMessage && !isLate)
        co_return begun.errorMessage();
    // What went down comes up, whatever becomes of the keys in between.
    QDBusPendingCall down = sendKey(bus, session, codes.key, true);
    const QDBusMessage pressed = co_await down;
    QDBusPendingCall up = sendKey(bus, session, codes.key, false);
    const QDBusMessage released = co_await up;
    QDBusPendingCall last = sendKey(bus, session, codes.modifier, false);
    const QDBusMessage ended = co_await last;
    Q_UNUSED(pressed)
    Q_UNUSED(released)
    Q_UNUSED(ended)
    co_return std::nullopt;
}

} // namespace

RemoteDesktopKeys::RemoteDesktopKeys(Portal &portal, TokenStore &tokens,
                                     kwin::HeldModifiers *modifiers, FindCodes findCodes)
    : portal_(portal),
      tokens_(tokens),
      modifiers_(modifiers),
      findCodes_(std::move(findCodes)) {}

bool RemoteDesktopKeys::isAllowed() const {
    return !tokens_.token().isEmpty();
}

QCoro::Task<PortalAnswer> RemoteDesktopKeys::open(PortalSession &session,
                                                  std::chrono::milliseconds limit) {
    const QPointer self(this);
    PortalQuestion create{remoteDesktop, QStringLiteral("CreateSession"), {}, {}};
    create.options.insert(QStringLiteral("session_handle_token"), session.token());
    PortalAnswer answer = co_await portal_.ask(create, Portal::usualLimit);
    if (!self || !answer.isGranted())
        co_return answer;
    session.setPath(answer.results.value(QStringLiteral("session_handle")).toString());

    PortalQuestion select{remoteDesktop, QStringLiteral("SelectDevices"), {path(session)}, {}};
    select.options.insert(QStringLiteral("types"), keyboard);
    select.options.insert(QStringLiteral("persist_mode"), untilRevoked);
    if (isAllowed())
        select.options.insert(QStringLiteral("restore_token"), tokens_.token());
    answer = co_await portal_.ask(select, Portal::usualLimit);
    if (!self || !answer.isGranted())
        co_return answer;

    const PortalQuestion start{
        remoteDesktop, QStringLiteral("Start"), {path(session), QString()}, {}};
    answer = co_await portal_.ask(start, limit);
    if (!self)
        co_return answer;
    const bool hasKeyboard =
        (answer.results.value(QStringLiteral("devices")).toUInt() & keyboard) != 0;
    if (answer.isGranted() && !hasKeyboard)
        answer = {PortalAnswer::Outcome::cancelled, {}, QStringLiteral("without the keyboard")};
    noteStarted(answer);
    co_return answer;
}

void RemoteDesktopKeys::noteStarted(const PortalAnswer &started) {
    const bool wasAllowed = isAllowed();
    // A portal that does not answer at once asks the user, since it does not know the word any
    // more. It would do so at each use.
    if (started.outcome == PortalAnswer::Outcome::cancelled ||
        started.outcome == PortalAnswer::Outcome::unanswered)
        tokens_.setToken({});
    else if (started.isGranted())
        tokens_.setToken(started.results.value(QStringLiteral("restore_token")).toString());
    if (isAllowed() != wasAllowed)
        Q_EMIT allowedChanged();
}

QCoro::Task<PortalAnswer> RemoteDesktopKeys::askUser() {
    PortalSession session(portal_.bus());
    PortalAnswer answer = co_await open(session, askLimit);
    co_return answer;
}

QCoro::Task<wayland::TypedOutcome> RemoteDesktopKeys::type(wayland::TypedKeys keys,
                                                           std::function<bool()> isStillMeant,
                                                           std::function<void()> beforeLast) {
    if (!modifiers_)
        co_return unavailable(QStringLiteral("nobody tells whether the user holds modifiers"));
    if (!isAllowed())
        co_return unavailable(QStringLiteral("the user has not agreed"));
    const QPointer self(this);
    const QDBusConnection bus = portal_.bus();
    const kwin::ChordCodes codes = co_await findCodes_(keys);
    if (!self)
        co_return unavailable(QStringLiteral("the program ends"));
    PortalSession session(bus);
    bool isClosed = false;
    connect(&session, &PortalSession::closed, &session, [&isClosed] { isClosed = true; });
    const PortalAnswer opened = co_await open(session, Portal::usualLimit);
    if (!self)
        co_return unavailable(QStringLiteral("the program ends"));
    if (!opened.isGranted())
        co_return wayland::TypedOutcome{false, !isAllowed(), opened.reason};
    const std::optional<QString> held = co_await modifiers_->waitUntilUp();
    if (!self)
        co_return unavailable(QStringLiteral("the program ends"));
    if (held)
        co_return withheld(*held);
    if (isClosed)
        co_return withheld(QStringLiteral("the portal has ended the session"));
    if (!isStillMeant())
        co_return withheld(QStringLiteral("it is not meant any more"));
    beforeLast();
    const std::optional<QString> refusal = co_await press(bus, session, codes);
    if (refusal)
        co_return withheld(*refusal);
    co_return wayland::TypedOutcome{true, false, {}};
}

} // namespace quillmender::portal
