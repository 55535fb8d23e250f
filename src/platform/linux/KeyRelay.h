#pragma once

#include <QCoroTask>

#include <chrono>

namespace quillmender {

/// Somebody whom an application shows its keys before it acts on them.
class KeyRelay {
  public:
    KeyRelay() = default;
    KeyRelay(const KeyRelay &) = delete;
    KeyRelay &operator=(const KeyRelay &) = delete;
    virtual ~KeyRelay() = default;

    /// Waits until the keys that the application has read so far are back with it. False when
    /// somebody on the way takes longer than `patience`, 250 ms at least: keys are stuck there.
    virtual QCoro::Task<bool> waitUntilPassed(std::chrono::milliseconds patience) = 0;
};

} // namespace quillmender
