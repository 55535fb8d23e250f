#pragma once

#include <chrono>
#include <optional>

namespace quillmender {

/// When the application has read what it was told to paste, and when it is believed to have read
/// it for the last time. Chromium reads more than once for one paste and pastes what it read last,
/// and what keeps it from coming round to the chord keeps it from the next reading as well: after
/// each it is given as long again as the first took, 80 ms at least and a second at most.
class PasteReading {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    /// The chord is out: what was read before does not count any more.
    void begin(Moment typedAt);

    /// It has read. Without a chord that counts for nothing.
    void note(Moment readAt);

    bool isBegun() const { return latest_.has_value(); }

    /// How long after `now` the last reading is believed to be over; not more than zero when it is.
    /// Only once it has begun.
    std::chrono::milliseconds rest(Moment now) const;

  private:
    std::optional<Moment> typedAt_;
    std::optional<Moment> first_;
    std::optional<Moment> latest_;
};

} // namespace quillmender
