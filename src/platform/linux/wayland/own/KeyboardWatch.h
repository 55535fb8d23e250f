#pragma once

#include "platform/linux/wayland/own/SeatKeyboard.h"

#include <QObject>
#include <QSet>

#include <memory>
#include <unordered_map>

namespace quillmender::wayland {

/// What the compositor tells the toolkit's windows of the keyboards: the toolkit hands on neither
/// which keys were down when one came, nor the moment when it came. It listens on the
/// toolkit's connection, where the events come right before or after those that the toolkit
/// dispatches itself.
class KeyboardWatch : public QObject {
    Q_OBJECT

  public:
    /// The display outlives it. With a null one nothing is known.
    explicit KeyboardWatch(wl_display *toolkitDisplay);
    ~KeyboardWatch() override;

    wl_display *display() const { return display_; }

    /// Native codes, as QKeyEvent has them: of the keys that were down when a window of this
    /// program got the keyboard last, and have not been let go of since.
    QSet<quint32> downAtEntry() const;

    bool isDown(quint32 code) const;

    /// Whether there is any keyboard that a window can have.
    bool isAny() const;

    /// Whether the compositor has yet to say of one whether a window of this program has it. A
    /// question that it is asked after this was answered is answered after it has.
    bool isAwaited() const;

    /// Whether a window of this program has a keyboard.
    bool isHere() const;

    /// What would mix with keys that are typed, of the keyboard that a window of this program has:
    /// the bits of XKB's real modifiers. Absent when none has one, or nothing has been told of it.
    std::optional<quint32> modifiers() const;

    /// The same as it was when the last window let go of its keyboard, if that is no longer ago.
    std::optional<quint32> modifiersAtDeparture(std::chrono::milliseconds ago) const;

    /// The layout that was in use when a window of this program had a keyboard last.
    quint32 layout() const { return latest_ ? latest_->layout() : 0; }

  Q_SIGNALS:
    /// `modifiers()` may answer something else.
    void modifiersTold();

  private:
    struct Events;

    void announce(quint32 name, const char *interface, quint32 version);

    wl_display *display_;
    Proxy<wl_registry> registry_;
    std::unordered_map<quint32, std::unique_ptr<SeatKeyboard>> seats_; ///< by their global names
    const SeatKeyboard *latest_ = nullptr;                             ///< that came here
};

} // namespace quillmender::wayland
