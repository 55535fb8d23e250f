#pragma once

namespace quillmender {

/// Whether this program may read and write the texts of other applications.
class AccessibilityAccess {
  public:
    AccessibilityAccess() = default;
    AccessibilityAccess(const AccessibilityAccess &) = delete;
    AccessibilityAccess &operator=(const AccessibilityAccess &) = delete;
    virtual ~AccessibilityAccess() = default;

    /// Puts the question already that `isGranted`, called at once after this and whatever else is
    /// there to be done, waits for. Does not wait.
    virtual void ask() = 0;

    /// Asks the system now, which has a quarter of a second to answer.
    virtual bool isGranted() = 0;

    /// Asks the system to grant it, with a prompt where it has one. What comes of it is seen when
    /// it is asked again.
    virtual void request() = 0;
};

} // namespace quillmender
