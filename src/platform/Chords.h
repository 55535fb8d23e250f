#pragma once

#include "platform/ChordContext.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"

#include <QCoroTask>
#include <QString>

namespace quillmender {

enum class Chord { copy, paste };

/// All that a chord needs to know of where it goes.
struct ChordTarget {
    RunningApplicationRef application{}; ///< never null
    ChordContextRef context{}; ///< of the capture that it is typed for; null when nothing is known
    LentTextRef text{};        ///< what is to be pasted; null for a copy
};

struct ChordResult {
    enum class Outcome {
        typed,
        /// Nothing was typed: the target is not in front or does not attend to its events, or the
        /// chord means something else or is unsafe there (copy in a terminal or a password field).
        withheld,
        unavailable, ///< nothing was typed: this system cannot type chords now
    };
    Outcome outcome = Outcome::unavailable;
    QString reason{}; ///< of what was not typed, in words for the log
};

/// Types the keys for copying and pasting into other applications, in the form that the system and
/// the application have for it: Command and a letter, Control and a letter, or Shift+Insert for a
/// paste into a terminal.
class Chords {
  public:
    Chords() = default;
    Chords(const Chords &) = delete;
    Chords &operator=(const Chords &) = delete;
    virtual ~Chords() = default;

    /// Waits until the application is in front and the user has let go of the modifiers of the hot
    /// key, where these would reach the application too, and types the chord. Completes when the
    /// chord is out, or when it is certain that it will not be.
    virtual QCoro::Task<ChordResult> type(Chord chord, ChordTarget into) = 0;
};

} // namespace quillmender
