#pragma once

#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/kwin/KwinProxies.h"

#include <memory>
#include <vector>

namespace quillmender::wayland {
class WaylandConnection;
}

namespace quillmender::kwin {

class PlasmaWindow;

/// The windows as Plasma's task bar is told of them (org_kde_plasma_window_management, version 13
/// and above): with the process, and the frame in the compositor's logical coordinates. What is no
/// window to it, such as a layer surface, has the keyboard unseen; the last window that was active
/// stays the active one meanwhile.
class PlasmaToplevels : public wayland::Toplevels {
    Q_OBJECT

  public:
    /// Null when the compositor does not offer it to this program, or too old a version. The
    /// windows are told within the next two round trips.
    static std::unique_ptr<PlasmaToplevels> create(wayland::WaylandConnection &connection);
    ~PlasmaToplevels() override;

    std::optional<wayland::Toplevel> active() const override;
    bool hasKeyboard(const QByteArray &id) const override;
    bool activate(const QByteArray &id) override;

  private:
    struct Events;

    explicit PlasmaToplevels(wayland::WaylandConnection &connection);
    void introduce(const char *id);
    void handleChange(PlasmaWindow *window);
    void remove(PlasmaWindow *window);
    void forgetAll();
    PlasmaWindow *find(const QByteArray &id) const;
    bool isForeign(const PlasmaWindow &window) const;

    wayland::WaylandConnection &connection_;
    wayland::Proxy<org_kde_plasma_window_management> management_;
    std::vector<std::unique_ptr<PlasmaWindow>> windows_;
    PlasmaWindow *last_ = nullptr; ///< the one that is active, or was last, of those that are there
};

} // namespace quillmender::kwin
