#pragma once

#include "fakes/CallLog.h"
#include "platform/Chords.h"

#include <functional>
#include <utility>

namespace quillmender::fakes {

class FakeChords : public Chords {
  public:
    explicit FakeChords(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<ChordResult> type(Chord chord, ChordTarget into) override {
        log_->append(chord == Chord::copy ? QStringLiteral("type copy")
                                          : QStringLiteral("type paste"));
        targets.append(into);
        if (result.outcome == ChordResult::Outcome::typed && onTyped)
            onTyped(chord);
        co_return std::as_const(result);
    }

    QList<ChordTarget> targets; ///< of the chords in their order
    ChordResult result{ChordResult::Outcome::typed};
    std::function<void(Chord)> onTyped;

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
