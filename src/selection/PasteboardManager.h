#pragma once

#include "model/PasteboardSnapshot.h"
#include "platform/Chords.h"
#include "platform/Pasteboard.h"

#include <chrono>
#include <optional>

namespace quillmender {

/// Saves the whole pasteboard before it is borrowed, puts it back afterwards, and types the two
/// Command chords that borrow it.
class PasteboardManager {
  public:
    PasteboardManager(Pasteboard &pasteboard, Chords &chords);

    Pasteboard &pasteboard() { return pasteboard_; }

    /// Never fails; a representation that its owner does not hand over is left out.
    QCoro::Task<PasteboardSnapshot> snapshot();

    /// The same, but not complete when that took longer than `limit`.
    QCoro::Task<PasteboardSnapshot> snapshotWithin(std::chrono::milliseconds limit);

    /// Replaces whatever is on the pasteboard now. Never fails; writes its best.
    void restore(const PasteboardSnapshot &snapshot);

    /// Types the chord into the application once it is ready for it.
    QCoro::Task<ChordResult> postCommandKeystroke(Chord chord, ChordTarget into);

  private:
    Pasteboard &pasteboard_;
    Chords &chords_;
};

} // namespace quillmender
