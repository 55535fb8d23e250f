#pragma once

#include <functional>

namespace quillmender {

/// A tray of the window system's own kind, beside that of the session bus.
class WindowSystemTray {
  public:
    WindowSystemTray() = default;
    WindowSystemTray(const WindowSystemTray &) = delete;
    WindowSystemTray &operator=(const WindowSystemTray &) = delete;
    virtual ~WindowSystemTray() = default;

    virtual bool isThere() = 0;

    /// One listener, which may be empty; it is called when a tray announces itself.
    virtual void onAnnouncement(std::function<void()> listener) = 0;
};

} // namespace quillmender
