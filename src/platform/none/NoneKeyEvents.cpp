#include "platform/none/NoneKeyEvents.h"

namespace quillmender {

QCoro::Task<ChordReadiness> NoneKeyEvents::prepareChord(RunningApplicationRef, Chord,
                                                        ChordContextRef) {
    co_return ChordReadiness::ready;
}

} // namespace quillmender
