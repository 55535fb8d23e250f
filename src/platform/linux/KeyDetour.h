#pragma once

#include <QCoroTask>

#include <chrono>

namespace quillmender {

/// Somebody whom an application shows its keys before it acts on them.
class KeyDetour {
  public:
    KeyDetour() = default;
    KeyDetour(const KeyDetour &) = delete;
    KeyDetour &operator=(const KeyDetour &) = delete;
    virtual ~KeyDetour() = default;

    /// Waits until the keys that the application has read so far are back with it. False when
    /// somebody on the way takes longer than `patience`, 250 ms at least: keys are stuck there.
    virtual QCoro::Task<bool> isPassed(std::chrono::milliseconds patience) = 0;
};

} // namespace quillmender
