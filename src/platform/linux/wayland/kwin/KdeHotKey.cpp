#include "platform/linux/wayland/kwin/KdeHotKey.h"

#include <QLoggingCategory>
#include <QPointer>

#include <utility>

namespace quillmender::kwin {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.kwin", QtWarningMsg)

const QString component = QStringLiteral("org.kde.kglobalaccel.Component");

KdeHotKey::Registration unanswered(const QString &reason) {
    return {false, reason};
}

} // namespace

KdeHotKey::KdeHotKey(QDBusConnection bus, QStringList action, QKeyCombination asked,
                     std::function<void()> handler)
    : HeldHotKey(std::move(handler)),
      bus_(std::move(bus)),
      accel_(bus_),
      action_(std::move(action)),
      asked_(asked),
      service_(GlobalAccel::service, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
    registerShortcutKeys();
    watch();
}

// The keys would stay grabbed for nobody. Who has not answered is not waited for.
KdeHotKey::~KdeHotKey() {
    if (held_)
        accel_.setInactiveNow(action_);
    else if (registration_ != 0)
        accel_.setInactive(action_);
}

void KdeHotKey::watch() {
    // Whoever else's key is pressed wakes nobody here.
    const QStringList ours = action_.first(2);
    bus_.connect(GlobalAccel::service, {}, component, QStringLiteral("globalShortcutPressed"), ours,
                 {}, this, SLOT(handlePressed()));
    bus_.connect(GlobalAccel::service, {}, component, QStringLiteral("globalShortcutReleased"),
                 ours, {}, this, SLOT(handleReleased()));
    bus_.connect(GlobalAccel::service, GlobalAccel::path, GlobalAccel::interface,
                 QStringLiteral("yourShortcutsChanged"), this,
                 SLOT(handleKeysChanged(QDBusMessage)));
    connect(&service_, &QDBusServiceWatcher::serviceUnregistered, this,
            &KdeHotKey::handleServiceGone);
    connect(&service_, &QDBusServiceWatcher::serviceRegistered, this, &KdeHotKey::registerAgain);
}

// The object may go while this waits: nothing of it is touched then.
QCoro::Task<KdeHotKey::Registration> KdeHotKey::registerKeys() {
    const QPointer self(this);
    const quint64 registration = ++registration_;
    const auto isLatest = [self, registration] {
        return self && self->registration_ == registration;
    };
    const GlobalAccel accel = accel_;
    const QStringList action = action_;
    const ShortcutKeys asked = shortcutKeys(asked_);

    const bool isRegistered = co_await accel.doRegister(action);
    if (!isRegistered)
        co_return unanswered(QStringLiteral("the keeper of global shortcuts does not answer"));
    const std::optional<ShortcutKeys> before = co_await accel.keys(action);
    const std::optional<ShortcutKeys> usual = co_await accel.defaultKeys(action);
    if (!isLatest() || !before || !usual)
        co_return unanswered(QStringLiteral("the keeper of global shortcuts answers nonsense"));
    // What differs from the default is the user's choice, also when it is no keys at all.
    const bool takeAsked = *before == *usual && *usual != asked;
    const quint32 flags =
        takeAsked ? GlobalAccel::present | GlobalAccel::regardless : quint32{GlobalAccel::present};
    const std::optional<ShortcutKeys> held = co_await accel.setKeys(action, asked, flags);
    if (!isLatest())
        co_return unanswered(QStringLiteral("it was registered anew meanwhile"));
    if (!held) {
        // It may still grab them when it comes round.
        accel.setInactive(action);
        co_return unanswered(QStringLiteral("the keeper of global shortcuts does not answer"));
    }
    // Taken keys do not become the default, so that they are asked for again next time.
    if (takeAsked && *held == asked)
        co_await accel.setKeys(action, asked, GlobalAccel::asDefault);
    Registration outcome{true, {}};
    const bool isTaken = takeAsked && held->isEmpty();
    if (isTaken) {
        const QString owner = co_await accel.ownerOf(asked);
        outcome.reason = QStringLiteral("another program has the keys: ") + owner;
    } else if (!combinationOf(*held)) {
        outcome.reason = QStringLiteral("the user has chosen no keys for it");
    }
    if (!isLatest())
        co_return outcome;
    isTaken_ = isTaken;
    setHeld(combinationOf(*held));
    co_return outcome;
}

void KdeHotKey::registerAgain() {
    const auto again = [](QPointer<KdeHotKey> self) -> QCoro::Task<> {
        const Registration outcome = co_await self->registerKeys();
        if (!outcome.reason.isEmpty())
            qCWarning(log, "no hot key: %s", qUtf8Printable(outcome.reason));
    };
    again(this);
}

void KdeHotKey::handleServiceGone() {
    ++registration_;
    gate_.release();
    setHeld(std::nullopt);
}

void KdeHotKey::handlePressed() {
    if (gate_.isPress())
        press();
}

void KdeHotKey::handleReleased() {
    gate_.release();
}

void KdeHotKey::handleKeysChanged(const QDBusMessage &signal) {
    const QVariantList arguments = signal.arguments();
    if (signal.signature() != QStringLiteral("asa(ai)"))
        return;
    if (arguments[0].toStringList().mid(0, 2) == action_.mid(0, 2)) {
        isTaken_ = false;
        setHeld(combinationOf(shortcutKeys(arguments[1]).value_or(ShortcutKeys())));
    } else if (isTaken_) {
        registerAgain(); // somebody else's keys have changed: perhaps ours are free now
    }
}

void KdeHotKey::setHeld(std::optional<QKeyCombination> keys) {
    if (keys == std::exchange(held_, keys))
        return;
    Q_EMIT keysChanged();
}

} // namespace quillmender::kwin
