#pragma once

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/keys/KeyboardProxies.h"
#include "platform/linux/wayland/keys/OwnKeymap.h"

#include <QElapsedTimer>

#include <memory>

namespace quillmender::wlroots {

/// The keyboard of a test's user, over a connection of its own: the one that the seat has, from
/// before any window to after the last.
class UserKeyboard {
  public:
    /// Of the layouts in the list, the one with this number is active.
    UserKeyboard(const QByteArray &display, const QByteArray &layouts, quint32 active = 0);

    void down(xkb_keysym_t symbol);
    void up(xkb_keysym_t symbol);
    void tap(xkb_keysym_t symbol);

    /// The key at this place of the board, whatever it types.
    void tapCode(quint32 code);

    /// The compositor has taken note of everything.
    bool settle() { return connection_->settle(std::chrono::seconds(10)); }

  private:
    void send(quint32 code, bool isDown);
    void change(xkb_keysym_t symbol, bool isDown);
    void sendModifiers();

    std::unique_ptr<wayland::WaylandConnection> connection_;
    wayland::Proxy<zwp_virtual_keyboard_manager_v1> manager_;
    wayland::Proxy<zwp_virtual_keyboard_v1> keyboard_;
    std::optional<wayland::OwnKeymap> keymap_;
    quint32 active_;
    quint32 held_ = 0;
    quint32 locked_ = 0;
    QElapsedTimer clock_;
};

} // namespace quillmender::wlroots
