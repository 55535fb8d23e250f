#pragma once

#include "platform/HotKeys.h"

namespace quillmender {

/// No global shortcuts.
class NoneHotKeys : public HotKeys {
  public:
    QCoro::Task<HotKeyOutcome> hold(QKeyCombination, std::function<void()>) override {
        co_return HotKeyOutcome{nullptr, QStringLiteral("this session has no global shortcuts")};
    }
};

} // namespace quillmender
