#pragma once

#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/wlroots/ForeignProxies.h"
#include "platform/linux/wayland/wlroots/OutputNames.h"

#include <QTimer>

#include <list>
#include <memory>

class QWindow;

namespace quillmender::wayland {
class WaylandConnection;
}

namespace quillmender::wlroots {

/// The windows that the compositor tells task bars of (`zwlr_foreign_toplevel_management_v1`). It
/// says nothing of their processes and places. Some leave a window active while a surface of
/// another kind, such as a launcher, has the keyboard: who has it is then known of our own alone.
class ForeignToplevels : public wayland::Toplevels {
    Q_OBJECT

  public:
    /// Null when the compositor does not tell. `ownAppId` is that of this program's own windows.
    /// The connection must outlive the object.
    static std::unique_ptr<ForeignToplevels> create(wayland::WaylandConnection &connection,
                                                    QString ownAppId);
    ~ForeignToplevels() override;

    std::optional<wayland::Toplevel> active() const override;
    bool hasKeyboard(const QByteArray &id) const override;
    bool activate(const QByteArray &id) override;

    /// Whether any window, this program's own among them, is active. With sway none is while a
    /// surface of another kind has the keyboard.
    bool isAnyActive() const;

  private:
    struct Events;
    struct Window {
        wayland::Proxy<zwlr_foreign_toplevel_handle_v1> proxy;
        ForeignToplevels *owner = nullptr;
        wayland::Toplevel toplevel{};
        QList<wl_output *> outputs{}; ///< the latest last
        bool isActive = false;
        bool isMinimized = false;
        bool isNextActive = false; ///< what the compositor has not yet said to be all
        bool isNextMinimized = false;
    };

    ForeignToplevels(wayland::WaylandConnection &connection,
                     wayland::Proxy<zwlr_foreign_toplevel_manager_v1> manager, QString ownAppId);

    void add(zwlr_foreign_toplevel_handle_v1 *handle);
    void noteOwnFocus(const QWindow *focused);
    void apply(Window &window);
    void remove(Window &window);
    void forgetAll();
    bool isOwn(const Window &window) const { return window.toplevel.appId == ownAppId_; }
    const Window *find(const QByteArray &id) const;

    wayland::WaylandConnection &connection_;
    QString ownAppId_;
    OutputNames outputs_;
    wayland::Proxy<zwlr_foreign_toplevel_manager_v1> manager_;
    std::list<Window> windows_; ///< entries stay in place
    QByteArray last_;           ///< the one that was active last, never this program's
    quint64 count_ = 0;
    QTimer whileFocusReturns_;
};

} // namespace quillmender::wlroots
