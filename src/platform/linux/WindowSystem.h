#pragma once

#include <QtGlobal>

namespace quillmender {

/// The standing of this program's own windows in the window system, which must know of them: what
/// the toolkit asked for about them has arrived there.
class WindowSystem {
  public:
    WindowSystem() = default;
    WindowSystem(const WindowSystem &) = delete;
    WindowSystem &operator=(const WindowSystem &) = delete;
    virtual ~WindowSystem() = default;

    /// Above others, on every desktop, not in task bar or pager. Before or after mapping.
    virtual void applyPanelAttributes(quintptr windowId) = 0;

    /// Asks for the focus and the front as a pager would, past focus-stealing prevention.
    virtual void activateWindow(quintptr windowId) = 0;
};

} // namespace quillmender
