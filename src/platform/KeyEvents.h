#pragma once

#include "platform/ChordContext.h"
#include "platform/Workspace.h"

#include <QCoroTask>
#include <QtGlobal>

#include <memory>

namespace quillmender {

/// Where synthetic events come from. Opaque.
class KeyEventSource {
  public:
    KeyEventSource() = default;
    KeyEventSource(const KeyEventSource &) = delete;
    KeyEventSource &operator=(const KeyEventSource &) = delete;
    virtual ~KeyEventSource() = default;
};

/// One key going down or up. Opaque.
class KeyEvent {
  public:
    KeyEvent() = default;
    KeyEvent(const KeyEvent &) = delete;
    KeyEvent &operator=(const KeyEvent &) = delete;
    virtual ~KeyEvent() = default;
};

using KeyEventSourceRef = std::shared_ptr<KeyEventSource>;
using KeyEventRef = std::shared_ptr<KeyEvent>;

/// Virtual key codes of the ANSI keyboard table, as the macOS event interface numbers them.
namespace keycode {
inline constexpr quint16 c = 8;
inline constexpr quint16 v = 9;
inline constexpr quint16 space = 49;
} // namespace keycode

inline constexpr qint32 combinedSessionState = 0;
inline constexpr quint64 commandFlag = 0x100000;
inline constexpr quint32 hidEventTap = 0;

/// What the user is about to be typed for.
enum class Chord { copy, paste };

enum class ChordReadiness {
    ready,
    /// The chord must not be sent: the target is not in front, or the chord means something else
    /// or is unsafe there (copy in a terminal or a password field).
    withheld,
};

/// Synthetic keyboard input, after the model of Quartz events. A key event with the Command flag
/// is the platform's own form of that chord: Control on Linux, and Shift+Insert for a paste into a
/// terminal.
class KeyEvents {
  public:
    KeyEvents() = default;
    KeyEvents(const KeyEvents &) = delete;
    KeyEvents &operator=(const KeyEvents &) = delete;
    virtual ~KeyEvents() = default;

    /// Waits until the chord can be typed into the application: it is in front and the user has
    /// let go of the modifiers of the hot key (after 300 ms they are released for them). The
    /// context is of the capture that the chord belongs to; null when nothing is known. Ready at
    /// once on macOS, where events carry their own flags.
    virtual QCoro::Task<ChordReadiness> prepareChord(RunningApplicationRef target, Chord chord,
                                                     ChordContextRef context) = 0;

    /// Null when it cannot be created.
    virtual KeyEventSourceRef createSource(qint32 state) = 0;

    /// Null when it cannot be created.
    virtual KeyEventRef createKeyboardEvent(const KeyEventSourceRef &source, quint16 keyCode,
                                            bool keyDown) = 0;

    virtual void setFlags(const KeyEventRef &event, quint64 flags) = 0;

    /// False when it was not posted, because the application that a chord was prepared for is no
    /// longer in front.
    virtual bool post(quint32 tap, const KeyEventRef &event) = 0;
};

} // namespace quillmender
