#pragma once

#include <QtGlobal>

#include <algorithm>
#include <chrono>

namespace quillmender {

/// How long a read from a selection's owner may take in all: half a second, and more only for as
/// many answers and as much data as really arrive. An owner that falls silent never costs more than
/// half a second.
class TransferBudget {
  public:
    using Clock = std::chrono::steady_clock;

    void noteProgress(qsizetype totalAnswers, qsizetype totalBytes) {
        answers_ = totalAnswers;
        bytes_ = totalBytes;
        lastProgress_ = Clock::now();
    }

    std::chrono::milliseconds remaining() const {
        constexpr qsizetype mebibyte = qsizetype{1024} * 1024;
        const auto forAnswers =
            std::min<std::chrono::milliseconds>(perAnswer * answers_, mostForAnswers);
        const auto allowed = std::min<std::chrono::milliseconds>(
            silence + forAnswers + perMebibyte * (bytes_ / mebibyte), most);
        const auto end = std::min(start_ + allowed, lastProgress_ + silence);
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        return std::max(left, std::chrono::milliseconds(0));
    }

  private:
    static constexpr std::chrono::milliseconds silence{500};
    static constexpr std::chrono::milliseconds perAnswer{200};
    static constexpr std::chrono::milliseconds mostForAnswers{5'000};
    static constexpr std::chrono::milliseconds perMebibyte{250};
    static constexpr std::chrono::milliseconds most{20'000};

    Clock::time_point start_ = Clock::now();
    Clock::time_point lastProgress_ = start_;
    qsizetype answers_ = 0;
    qsizetype bytes_ = 0;
};

} // namespace quillmender
