#pragma once

#include <QCoroTask>

#include <chrono>
#include <exception>

namespace quillmender {

/// What a suspended operation ends with when the program stops waiting for it.
class CancellationError : public std::exception {
  public:
    const char *what() const noexcept override { return "The operation was cancelled."; }
};

/// Sleeps on the continuous (monotonic) clock, without tolerance.
class Clock {
  public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// Throws CancellationError when cancelled.
    virtual QCoro::Task<> sleepFor(std::chrono::milliseconds duration) = 0;

    /// Ends every sleep under way, and every later one at once, with CancellationError.
    virtual void cancelAll() = 0;
};

} // namespace quillmender
