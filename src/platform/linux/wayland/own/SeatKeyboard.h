#pragma once

#include "platform/linux/wayland/CoreProxies.h"

#include <QObject>
#include <QSet>

#include <chrono>
#include <memory>
#include <optional>

namespace quillmender::wayland {

class RoundTrip;

/// The keyboard of one seat, as it is told to the windows of one connection. Codes are those that
/// the toolkit's key events have (`QKeyEvent::nativeScanCode`): evdev's and 8.
class SeatKeyboard : public QObject {
    Q_OBJECT

  public:
    using Moment = std::chrono::steady_clock::time_point;

    /// Takes the seat, which has just been bound on the display. That outlives it.
    SeatKeyboard(wl_display *display, Proxy<wl_seat> seat);
    ~SeatKeyboard() override;

    /// Whether the seat has one.
    bool isThere() const { return keyboard_ != nullptr; }

    /// Whether the compositor has yet to say what there is, or who has it.
    bool isAwaited() const;

    /// Whether a window of the connection has it.
    bool isHere() const { return isHere_; }

    /// The keys that were down when it came to a window of the connection last, and have not been
    /// let go of since: the toolkit may have nobody to tell of that at first.
    const QSet<quint32> &downAtEntry() const { return downAtEntry_; }

    /// The keys that are down now; none while it is elsewhere.
    const QSet<quint32> &down() const { return down_; }

    /// Which modifiers would mix with keys that are typed now, in the bits of XKB's real modifiers;
    /// absent before they have been told since the keyboard came. What was told last stays when it
    /// goes.
    std::optional<quint32> modifiers() const { return modifiers_; }

    /// The layout of the keymap that is in use, as of then.
    quint32 layout() const { return layout_; }

    /// When the keyboard went elsewhere; of no meaning before, and while it is here.
    Moment leftAt() const { return leftAt_; }

  Q_SIGNALS:
    void entered();
    void modifiersTold();

  private:
    struct Events;

    void setCapabilities(quint32 capabilities);
    void enter(const wl_array &keys);
    void setKey(quint32 code, bool isDown);
    void setModifiers(quint32 mixing, quint32 layout);
    void leave();

    wl_display *display_;
    Proxy<wl_seat> seat_;
    Proxy<wl_keyboard> keyboard_;
    std::unique_ptr<RoundTrip> description_; ///< behind what was asked last
    bool isHere_ = false;
    QSet<quint32> downAtEntry_;
    QSet<quint32> down_;
    std::optional<quint32> modifiers_;
    quint32 layout_ = 0;
    Moment leftAt_;
};

} // namespace quillmender::wayland
