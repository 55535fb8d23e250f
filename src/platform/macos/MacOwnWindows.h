#pragma once

#include "platform/OwnWindows.h"
#include "platform/macos/WindowWatch.h"

#import <AppKit/AppKit.h>
#include <functional>

namespace quillmender {

/// Windows of a program of the status bar. The NSWindow around the toolkit's view may be another
/// one at each show. An activated application gets the focus back with the panel on screen, and the
/// one that had it before when the last window has gone.
class MacOwnWindows : public OwnWindows {
  public:
    /// `viewOf` finds the toolkit's view of a window; tests bring views of their own.
    explicit MacOwnWindows(std::function<NSView *(const QWindow &)> viewOf = &toolkitView);

    void setAccessoryPolicy() override;
    void applyPanelAttributes(QWindow *window) override;
    void applyWindowAttributes(QWindow *window) override;

    int coveredHeight(QWindow *panel) override;

    /// Gives a window that was made anew its attributes again first.
    void activate(QWindow *window) override;

    std::unique_ptr<SteppedAside> stepAside(QWindow *) override { return nullptr; }

  private:
    static NSView *toolkitView(const QWindow &window);

    void apply(const QWindow &window);

    std::function<NSView *(const QWindow &)> viewOf_;
    WindowWatch watch_;
};

} // namespace quillmender
