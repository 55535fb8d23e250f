#pragma once

#include "platform/Chords.h"

namespace quillmender {

/// Quartz events, posted at once. Each carries its own flags, so that what the user still holds
/// does not matter; they go to the application in front.
class MacChords : public Chords {
  public:
    QCoro::Task<ChordResult> type(Chord chord, ChordTarget into) override;
};

} // namespace quillmender
