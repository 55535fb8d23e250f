#include "platform/linux/portal/RemoteDesktopPermission.h"

#include "platform/linux/portal/Portal.h"
#include "platform/linux/portal/RemoteDesktopKeys.h"

#include <QLoggingCategory>
#include <QPointer>

#include <utility>

namespace quillmender::portal {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.portal", QtWarningMsg)

constexpr quint32 lowestVersion = 2; // before, the user would be asked at each use

QString troubleOf(PortalAnswer::Outcome outcome) {
    switch (outcome) {
    case PortalAnswer::Outcome::granted:
        return {};
    case PortalAnswer::Outcome::cancelled:
        return QStringLiteral("You have not agreed.");
    case PortalAnswer::Outcome::unanswered:
        return QStringLiteral("Your desktop has not answered.");
    case PortalAnswer::Outcome::failed:
        break;
    }
    return QStringLiteral("Your desktop could not ask you.");
}

} // namespace

RemoteDesktopPermission::RemoteDesktopPermission(Portal &portal, RemoteDesktopKeys &keys)
    : portal_(portal),
      keys_(keys) {
    connect(&keys_, &RemoteDesktopKeys::allowedChanged, this, &Permission::changed);
    connect(&portal_, &Portal::came, this, &RemoteDesktopPermission::probe);
    probe();
}

Permission::State RemoteDesktopPermission::state() const {
    if (isAsked_)
        return State::asked;
    if (keys_.isAllowed())
        return State::granted;
    return isOffered_ ? State::missing : State::unavailable;
}

QString RemoteDesktopPermission::sentence() const {
    switch (state()) {
    case State::granted:
        return QStringLiteral("Quillmender may copy and paste for you.");
    case State::asked:
        return QStringLiteral("Your desktop has been told to ask you. Look for its window.");
    case State::missing:
    case State::unavailable:
        break;
    }
    const QString lack = QStringLiteral("Quillmender cannot copy or paste for you.");
    return trouble_.isEmpty() ? lack : lack + u' ' + trouble_;
}

void RemoteDesktopPermission::probe() {
    const auto look = [](QPointer<RemoteDesktopPermission> self) -> QCoro::Task<> {
        const quint32 version = co_await self->portal_.version(QStringLiteral("RemoteDesktop"));
        const bool isOffered = version >= lowestVersion;
        if (self && std::exchange(self->isOffered_, isOffered) != isOffered)
            Q_EMIT self->changed();
    };
    look(this);
}

void RemoteDesktopPermission::ask() {
    if (state() != State::missing)
        return;
    isAsked_ = true;
    trouble_.clear();
    Q_EMIT changed();
    const auto askUser = [](QPointer<RemoteDesktopPermission> self) -> QCoro::Task<> {
        const PortalAnswer answer = co_await self->keys_.askUser();
        if (self)
            self->noteAnswer(answer);
    };
    askUser(this);
}

void RemoteDesktopPermission::noteAnswer(const PortalAnswer &answer) {
    isAsked_ = false;
    trouble_ = troubleOf(answer.outcome);
    // It lasts for nothing when there is no word by which it is known again.
    if (answer.isGranted() && !keys_.isAllowed())
        trouble_ = QStringLiteral("Your desktop does not remember that you agree.");
    if (!answer.isGranted())
        qCWarning(log, "no permission to type: %s", qUtf8Printable(answer.reason));
    Q_EMIT changed();
}

} // namespace quillmender::portal
