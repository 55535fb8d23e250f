#pragma once

#include <QtGlobal>

#include <algorithm>
#include <chrono>

namespace quillmender {

/// How long a read from a selection's owner may take in all: as long as an owner may be silent
/// (half a second, where nothing else is said), and more only for as many answers and as much data
/// as really arrive. One that does not come to an end costs no more than its reader's limit.
class TransferBudget {
  public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds most{20'000};

    static constexpr std::chrono::milliseconds shortSilence{500};

    explicit TransferBudget(std::chrono::milliseconds limit = most,
                            std::chrono::milliseconds silence = shortSilence)
        : limit_(start_ + std::min(limit, most)),
          silence_(silence) {}

    void noteProgress(qsizetype totalAnswers, qsizetype totalBytes) {
        answers_ = totalAnswers;
        bytes_ = totalBytes;
        lastProgress_ = Clock::now();
    }

    std::chrono::milliseconds remaining() const {
        constexpr qsizetype mebibyte = qsizetype{1024} * 1024;
        const auto forAnswers =
            std::min<std::chrono::milliseconds>(perAnswer * answers_, mostForAnswers);
        const Clock::time_point allowed =
            start_ + silence_ + forAnswers + perMebibyte * (bytes_ / mebibyte);
        return left(std::min({allowed, lastProgress_ + silence_, limit_}));
    }

    /// Until the limit, whatever the owner does.
    std::chrono::milliseconds untilLimit() const { return left(limit_); }

    /// For another read within the same limit.
    TransferBudget again() const { return TransferBudget(untilLimit(), silence_); }

  private:
    static std::chrono::milliseconds left(Clock::time_point end) {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        return std::max(rest, std::chrono::milliseconds(0));
    }

    static constexpr std::chrono::milliseconds perAnswer{200};
    static constexpr std::chrono::milliseconds mostForAnswers{5'000};
    static constexpr std::chrono::milliseconds perMebibyte{250};

    Clock::time_point start_ = Clock::now();
    Clock::time_point lastProgress_ = start_;
    Clock::time_point limit_;
    std::chrono::milliseconds silence_;
    qsizetype answers_ = 0;
    qsizetype bytes_ = 0;
};

} // namespace quillmender
