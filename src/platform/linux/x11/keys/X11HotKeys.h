#pragma once

#include "platform/HotKeys.h"

namespace quillmender::x11 {

class X11Connection;
class X11Keymap;

/// Hot keys with a key that types a printable ASCII character.
class X11HotKeys : public HotKeys {
  public:
    X11HotKeys(X11Connection &connection, X11Keymap &keymap)
        : connection_(connection),
          keymap_(keymap) {}

    QCoro::Task<HotKeyOutcome> hold(QKeyCombination keys, std::function<void()> handler) override;

  private:
    X11Connection &connection_;
    X11Keymap &keymap_;
};

} // namespace quillmender::x11
