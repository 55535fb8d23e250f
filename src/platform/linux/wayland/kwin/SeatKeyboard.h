#pragma once

#include "platform/linux/wayland/kwin/KwinProxies.h"

#include <QByteArray>

namespace quillmender::wayland {
class WaylandConnection;
}

namespace quillmender::kwin {

/// The keyboard map of the seat, which a compositor tells to everybody. No window of this
/// connection ever has the keyboard, so that nothing of what the user types arrives here.
class SeatKeyboard {
  public:
    explicit SeatKeyboard(wayland::WaylandConnection &connection);
    SeatKeyboard(const SeatKeyboard &) = delete;
    SeatKeyboard &operator=(const SeatKeyboard &) = delete;

    /// In the text format of XKB; empty while the seat has no keyboard.
    const QByteArray &keymap() const { return keymap_; }

  private:
    struct Events;

    void handleCapabilities(quint32 capabilities);
    void readKeymap(quint32 format, int descriptor, quint32 size);

    QByteArray keymap_;
    wayland::Proxy<wl_seat> seat_;
    wayland::Proxy<wl_keyboard> keyboard_;
};

} // namespace quillmender::kwin
