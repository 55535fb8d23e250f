#pragma once

#include "desktop/harness/XcbConnection.h"

#include <functional>
#include <thread>

namespace quillmender {

/// Sees on the X server when the clipboard changes hands and when another window becomes active.
class WindowWatch {
  public:
    enum class Event { clipboardTaken, activeWindowChanged };
    /// Called on a thread of its own.
    using Observer = std::function<void(Event)>;

    WindowWatch(const QString &display, Observer observer);
    WindowWatch(const WindowWatch &) = delete;
    WindowWatch &operator=(const WindowWatch &) = delete;
    ~WindowWatch();

  private:
    void run();

    harness::XcbConnection connection_;
    Observer observer_;
    int clipboardEvent_ = 0;
    int stopEvent_;
    std::thread thread_;
};

} // namespace quillmender
