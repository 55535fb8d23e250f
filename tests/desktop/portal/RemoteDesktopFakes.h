#pragma once

#include "platform/linux/portal/TokenStore.h"
#include "platform/linux/wayland/KeyTyping.h"
#include "platform/linux/wayland/kwin/ChordCodes.h"
#include "platform/linux/wayland/kwin/HeldModifiers.h"

#include <functional>
#include <utility>

namespace quillmender {

struct FakeTokens : portal::TokenStore {
    QString token() override { return kept; }
    void setToken(const QString &token) override { kept = token; }
    QString kept;
};

struct FakeModifiers : kwin::HeldModifiers {
    QCoro::Task<std::optional<QString>> waitUntilUp() override {
        if (beforeAnswer)
            beforeAnswer();
        co_return std::as_const(held);
    }
    std::optional<QString> held;
    std::function<void()> beforeAnswer;
};

inline QCoro::Task<kwin::ChordCodes> fakeCodes(wayland::TypedKeys) {
    co_return kwin::ChordCodes{29, 46};
}

} // namespace quillmender
