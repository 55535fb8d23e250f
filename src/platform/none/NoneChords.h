#pragma once

#include "platform/Chords.h"

namespace quillmender {

/// No synthetic input.
class NoneChords : public Chords {
  public:
    QCoro::Task<ChordResult> type(Chord chord, ChordTarget into) override;
};

} // namespace quillmender
