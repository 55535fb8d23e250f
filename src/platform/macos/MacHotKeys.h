#pragma once

#include "platform/HotKeys.h"

namespace quillmender {

/// Hot keys of the Carbon event manager, with the Space key. Every call completes at once.
class MacHotKeys : public HotKeys {
  public:
    QCoro::Task<HotKeyOutcome> hold(QKeyCombination keys, std::function<void()> handler) override;
};

} // namespace quillmender
