#include "platform/none/NoneChords.h"

namespace quillmender {

QCoro::Task<ChordResult> NoneChords::type(Chord, ChordTarget) {
    co_return ChordResult{ChordResult::Outcome::unavailable,
                          QStringLiteral("this session takes no keys from programs")};
}

} // namespace quillmender
