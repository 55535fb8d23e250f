#pragma once

#include "platform/HotKeys.h"

namespace quillmender::sway {

class SwayIpc;

/// Hot keys with a key that types a printable ASCII character, by the compositor's socket. The
/// outcome has the reason too when a hot key holds no keys for now.
class SwayHotKeys : public HotKeys {
  public:
    /// The connection must outlive the object and its hot keys.
    explicit SwayHotKeys(SwayIpc &ipc) : ipc_(ipc) {}

    QCoro::Task<HotKeyOutcome> hold(QKeyCombination keys, std::function<void()> handler) override;

  private:
    SwayIpc &ipc_;
};

} // namespace quillmender::sway
