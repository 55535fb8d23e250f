#pragma once

#include "platform/HotKeys.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace quillmender {

/// The one global shortcut. The user is told of no failure but in the settings: the status menu
/// does the same thing.
class HotKeyManager : public QObject {
    Q_OBJECT

  public:
    /// `handler` runs on the main thread, in a turn of the event loop of its own, once a press.
    HotKeyManager(HotKeys &hotKeys, std::function<void()> handler);

    /// Replaces an earlier registration.
    void registerHotKey();

  Q_SIGNALS:
    /// The keys that start the handler from now on, none while it has no keys.
    void heldKeysChanged(std::optional<QKeyCombination> keys);

  private:
    QCoro::Task<> hold();
    void tellHeldKeys();

    HotKeys &hotKeys_;
    std::function<void()> handler_;
    std::unique_ptr<HeldHotKey> hotKey_;
    quint64 latestRegistration_ = 0;
};

} // namespace quillmender
