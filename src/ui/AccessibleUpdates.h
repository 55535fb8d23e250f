#pragma once

#include <QAccessible>

namespace quillmender {

/// From the first call on, every change that the program announces to assistive technology takes
/// this way, on which filters are asked and secrets left out. May be called more than once.
void superviseAccessibleUpdates();

/// Sees each change before it is announced.
class AccessibleUpdateFilter {
  public:
    AccessibleUpdateFilter();
    virtual ~AccessibleUpdateFilter();
    AccessibleUpdateFilter(const AccessibleUpdateFilter &) = delete;
    AccessibleUpdateFilter &operator=(const AccessibleUpdateFilter &) = delete;

    /// True for a change that is not to be announced now.
    virtual bool holdsBack(const QAccessibleEvent &event) = 0;
};

} // namespace quillmender
