#pragma once

#include "model/PasteboardSnapshot.h"
#include "platform/KeyEvents.h"
#include "platform/Pasteboard.h"

#include <chrono>
#include <optional>

namespace quillmender {

enum class KeystrokeResult {
    posted,
    withheld, ///< nothing was posted: the chord would have gone astray (ChordReadiness)
    failed,   ///< nothing was posted: the event source or an event cannot be created
};

/// Saves the whole pasteboard before it is borrowed, puts it back afterwards, and types the two
/// Command chords that borrow it.
class PasteboardManager {
  public:
    PasteboardManager(Pasteboard &pasteboard, KeyEvents &keyEvents);

    Pasteboard &pasteboard() { return pasteboard_; }

    /// Never fails; a representation that its owner does not hand over is left out.
    QCoro::Task<PasteboardSnapshot> snapshot();

    /// The same, but not complete when that took longer than `limit`.
    QCoro::Task<PasteboardSnapshot> snapshotWithin(std::chrono::milliseconds limit);

    /// Replaces whatever is on the pasteboard now. Never fails; writes its best.
    void restore(const PasteboardSnapshot &snapshot);

    /// Types Command and the key of `keyCode` into the application once it is ready for it. The
    /// context is of the capture that it is typed for.
    QCoro::Task<KeystrokeResult> postCommandKeystroke(RunningApplicationRef target, quint16 keyCode,
                                                      ChordContextRef context);

  private:
    Pasteboard &pasteboard_;
    KeyEvents &keyEvents_;
};

} // namespace quillmender
