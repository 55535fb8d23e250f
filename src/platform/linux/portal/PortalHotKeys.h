#pragma once

#include "platform/HotKeys.h"

namespace quillmender::portal {

class Portal;

/// Hot keys of the desktop portal (org.freedesktop.portal.GlobalShortcuts).
class PortalHotKeys : public HotKeys {
  public:
    /// The portal outlives it, and what it has made.
    explicit PortalHotKeys(Portal &portal) : portal_(portal) {}

    QCoro::Task<HotKeyOutcome> hold(QKeyCombination keys, std::function<void()> handler) override;

  private:
    Portal &portal_;
};

} // namespace quillmender::portal
