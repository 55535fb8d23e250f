#include "app/HotKeyManager.h"

#include "settings/HotKeyDisplay.h"

#include <QLoggingCategory>
#include <QPointer>

#include <utility>

namespace quillmender {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.hotkey", QtWarningMsg)
} // namespace

HotKeyManager::HotKeyManager(HotKeys &hotKeys, std::function<void()> handler)
    : hotKeys_(hotKeys),
      handler_(std::move(handler)) {}

void HotKeyManager::registerHotKey() {
    hotKey_.reset();
    hold();
}

QCoro::Task<> HotKeyManager::hold() {
    const QPointer manager(this);
    const quint64 registration = ++latestRegistration_;
    HotKeyOutcome outcome = co_await hotKeys_.hold(askedHotKey, handler_);
    // What comes too late is let go of again.
    if (!manager || registration != latestRegistration_)
        co_return;
    hotKey_ = std::move(outcome.hotKey);
    if (hotKey_)
        connect(hotKey_.get(), &HeldHotKey::keysChanged, this, &HotKeyManager::tellHeldKeys);
    else
        qCWarning(log, "there is no hot key: %s", qUtf8Printable(outcome.reason));
    tellHeldKeys();
}

void HotKeyManager::tellHeldKeys() {
    Q_EMIT heldKeysChanged(hotKey_ ? hotKey_->keys() : std::nullopt);
}

} // namespace quillmender
