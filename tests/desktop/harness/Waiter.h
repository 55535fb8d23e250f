#pragma once

#include <QString>

#include <chrono>
#include <functional>

namespace quillmender::harness {

/// The deadline of waits that say nothing else. Generous: it is reached by failures only.
inline constexpr std::chrono::milliseconds defaultDeadline{20000};

/// Runs the event loop until the condition holds; it is asked again after each event and every few
/// milliseconds. Answers whether it came to hold before the deadline.
bool becomesTrue(const std::function<bool()> &condition,
                 std::chrono::milliseconds deadline = defaultDeadline);

/// The same, but throws a HarnessError that says "what" did not happen.
void waitUntil(const std::function<bool()> &condition, const QString &what,
               std::chrono::milliseconds deadline = defaultDeadline);

/// Called just before waitUntil throws, while everything still is as it was; null for none.
void setTimeoutObserver(std::function<void()> observer);

} // namespace quillmender::harness
