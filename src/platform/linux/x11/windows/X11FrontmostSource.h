#pragma once

#include "platform/linux/FrontmostSource.h"
#include "platform/linux/terminal/TerminalCatalog.h"

#include <xcb/xcb.h>

namespace quillmender::x11 {

class ActiveWindow;
class X11Connection;

/// The application in front by what its window says: process and class.
class X11FrontmostSource : public FrontmostSource {
  public:
    X11FrontmostSource(X11Connection &connection, ActiveWindow &activeWindow)
        : connection_(connection),
          activeWindow_(activeWindow) {}

    RunningApplicationRef application() const override;
    bool isTerminal() const override;

    bool prepareMore() override { return terminals_.prepareMore(); }

    QCoro::Task<std::optional<QString>> primarySelection() override;

    bool isTerminalWindow(xcb_window_t window) const;
    bool isCommandEditorWindow(xcb_window_t window) const;

  private:
    /// The two strings of WM_CLASS, empty where it has none.
    QStringList classOf(xcb_window_t window) const;

    X11Connection &connection_;
    ActiveWindow &activeWindow_;
    TerminalCatalog terminals_;
};

} // namespace quillmender::x11
