#pragma once

#include <QElapsedTimer>

#include <chrono>

namespace quillmender {

/// Tells the presses of a hot key from its repeats, where both are announced alike: what comes
/// before the release repeats the press.
class PressGate {
  public:
    /// For each announcement: whether the user has pressed the keys.
    bool isPress() {
        // Should a release ever escape us, the next press must not count as a repeat for ever.
        const bool isRepeat = isDown_ && !sinceLast_.hasExpired(longestRepeatGap.count());
        isDown_ = true;
        sinceLast_.start();
        return !isRepeat;
    }

    void release() { isDown_ = false; }

  private:
    static constexpr std::chrono::milliseconds longestRepeatGap{3000};

    bool isDown_ = false;
    QElapsedTimer sinceLast_;
};

} // namespace quillmender
