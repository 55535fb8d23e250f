#include "platform/linux/wayland/kwin/KeystateModifiers.h"

#include "platform/Clock.h"
#include "platform/SignalWait.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/kwin/ModifierStates.h"

#include <QDeadlineTimer>
#include <QPointer>

namespace quillmender::kwin {

using namespace std::chrono_literals;

namespace {

constexpr quint32 lowestVersion = 5; // before, it knows nothing but the locks
constexpr std::chrono::milliseconds patience = 1s;

} // namespace

std::unique_ptr<KeystateModifiers>
KeystateModifiers::create(wayland::WaylandConnection &connection) {
    if (connection.offeredVersion(org_kde_kwin_keystate_interface) < lowestVersion)
        return nullptr;
    return std::unique_ptr<KeystateModifiers>(new KeystateModifiers(connection));
}

// Nothing of this object is touched after a wait, nor is the connection: its end ends the states.
QCoro::Task<std::optional<QString>> KeystateModifiers::waitUntilUp() {
    if (connection_.isLost())
        co_return QStringLiteral("the compositor is gone");
    // A child, so that it ends before the connection does.
    const QPointer states(new ModifierStates(connection_));
    states->setParent(&connection_);
    const QDeadlineTimer deadline(patience, Qt::PreciseTimer);
    while (!states->isComplete() || !states->held().isEmpty()) {
        const auto left = std::chrono::milliseconds(deadline.remainingTime());
        if (left <= 0ms)
            break;
        try {
            co_await SignalWait(states.data(), &ModifierStates::changed, left);
        } catch (const CancellationError &) {
            co_return QStringLiteral("the compositor is gone");
        }
    }
    const bool isComplete = states->isComplete();
    const QString held = states->held();
    delete states.data();
    if (!isComplete)
        co_return QStringLiteral("the compositor does not tell which modifiers are down");
    if (!held.isEmpty())
        co_return QStringLiteral("the user holds ") + held;
    co_return std::nullopt;
}

} // namespace quillmender::kwin
