#pragma once

#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/kwin/KwinProxies.h"

#include <functional>

namespace quillmender::kwin {

/// One window of org_kde_plasma_window_management, as its events have told of it so far.
class PlasmaWindow {
  public:
    struct Listeners {
        std::function<void(PlasmaWindow *)> changed; ///< never before it has been introduced
        std::function<void(PlasmaWindow *)> gone;    ///< may delete the window
    };

    PlasmaWindow(org_kde_plasma_window_management *management, const char *id, Listeners listeners);
    PlasmaWindow(const PlasmaWindow &) = delete;
    PlasmaWindow &operator=(const PlasmaWindow &) = delete;
    ~PlasmaWindow() = default;

    const wayland::Toplevel &description() const { return description_; }

    /// Whether everything that belongs to it from the beginning has been told.
    bool isIntroduced() const { return isIntroduced_; }
    bool isActive() const { return (state_ & active) != 0; }
    bool isMinimized() const { return (state_ & minimized) != 0; }

    void activate();

  private:
    struct Events;
    static constexpr quint32 active = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;
    static constexpr quint32 minimized = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED;

    void setState(quint32 state);
    void tellChange();

    wayland::Toplevel description_;
    Listeners listeners_;
    quint32 state_ = 0;
    bool isIntroduced_ = false;
    wayland::Proxy<org_kde_plasma_window> window_;
};

} // namespace quillmender::kwin
