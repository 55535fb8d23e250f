#pragma once

#include <cstdint>

namespace quillmender::doubles {

/// A window as the toolkit makes it: a view, whose address is the window identifier, in a native
/// window that may be made anew around it.
class ToolkitWindow {
  public:
    enum class Kind { window, panel };

    ToolkitWindow(Kind kind, double contentWidth, double contentHeight);
    ToolkitWindow(const ToolkitWindow &) = delete;
    ToolkitWindow &operator=(const ToolkitWindow &) = delete;
    ~ToolkitWindow();

    std::uintptr_t identifier() const;
    void makeNativeWindowAnew();
    void loseNativeWindow();

    unsigned long styleMask() const;
    long level() const;
    unsigned long collectionBehavior() const;
    bool isFloatingPanel() const;
    bool hasTransparentTitleBar() const;
    long titleVisibility() const;
    bool isReleasedWhenClosed() const;
    bool hidesOnDeactivate() const;
    /// 0 close, 1 miniaturize, 2 zoom
    bool showsButton(unsigned long button) const;
    double contentWidth() const;
    double contentHeight() const;
    /// Of the content on the screen, from below.
    double contentBottom() const;

  private:
    void makeNativeWindow();

    Kind kind_;
    void *view_;
    void *window_ = nullptr;
};

} // namespace quillmender::doubles
