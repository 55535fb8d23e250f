#pragma once

#include "fakes/CallLog.h"
#include "fakes/Gate.h"
#include "platform/HotKeys.h"

#include <QKeySequence>
#include <QPointer>

namespace quillmender::fakes {

/// Records what is held and let go of. A test presses the keys, takes them away and gives others.
class FakeHotKeys : public HotKeys {
  public:
    class Held : public HeldHotKey {
      public:
        Held(CallLog log, std::optional<QKeyCombination> keys, std::function<void()> handler)
            : HeldHotKey(std::move(handler)),
              log_(std::move(log)),
              keys_(keys) {}
        ~Held() override { log_->append(QStringLiteral("letGo")); }

        std::optional<QKeyCombination> keys() const override { return keys_; }
        void setKeys(std::optional<QKeyCombination> keys) {
            keys_ = keys;
            Q_EMIT keysChanged();
        }
        using HeldHotKey::press;

      private:
        CallLog log_;
        std::optional<QKeyCombination> keys_;
    };

    explicit FakeHotKeys(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<HotKeyOutcome> hold(QKeyCombination keys, std::function<void()> handler) override {
        log_->append(QStringLiteral("hold ") +
                     QKeySequence(keys).toString(QKeySequence::PortableText));
        if (gate) {
            Gate own = *gate;
            co_await own;
        }
        if (!refusal.isEmpty())
            co_return HotKeyOutcome{nullptr, refusal};
        auto made = std::make_unique<Held>(log_, isTaken ? std::nullopt : std::optional(keys),
                                           std::move(handler));
        held = made.get();
        co_return HotKeyOutcome{std::move(made), {}};
    }

    /// The user presses the keys; nothing happens when nobody holds them.
    void press() {
        if (held && held->keys())
            held->press();
    }

    QPointer<Held> held;  ///< the newest
    QString refusal;      ///< why no hot key can be had; empty when it can
    bool isTaken = false; ///< another program has the keys
    Gate *gate = nullptr; ///< holds up the answer

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
