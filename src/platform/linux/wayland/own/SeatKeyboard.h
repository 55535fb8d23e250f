#pragma once

#include "platform/linux/wayland/CoreProxies.h"

#include <QObject>
#include <QSet>

namespace quillmender::wayland {

/// The keyboard of one seat, as it is told to the windows of one connection. Codes are those that
/// the toolkit's key events have (`QKeyEvent::nativeScanCode`): evdev's and 8.
class SeatKeyboard : public QObject {
    Q_OBJECT

  public:
    /// Takes the seat, which has just been bound.
    explicit SeatKeyboard(Proxy<wl_seat> seat);

    /// Whether the seat has one.
    bool isThere() const { return keyboard_ != nullptr; }

    /// Whether a window of the connection has it.
    bool isHere() const { return isHere_; }

    /// The keys that were down when it came to a window of the connection last, and have not been
    /// let go of since: the toolkit may have nobody to tell of that at first.
    const QSet<quint32> &downAtEntry() const { return downAtEntry_; }

    /// The keys that are down now; none while it is elsewhere.
    const QSet<quint32> &down() const { return down_; }

  Q_SIGNALS:
    void entered();

  private:
    struct Events;

    void setCapabilities(quint32 capabilities);
    void enter(const wl_array &keys);
    void setKey(quint32 code, bool isDown);
    void leave();

    Proxy<wl_seat> seat_;
    Proxy<wl_keyboard> keyboard_;
    bool isHere_ = false;
    QSet<quint32> downAtEntry_;
    QSet<quint32> down_;
};

} // namespace quillmender::wayland
