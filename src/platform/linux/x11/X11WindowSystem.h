#pragma once

#include "platform/linux/WindowSystem.h"
#include "platform/linux/x11/WindowWatch.h"

#include <QObject>
#include <QSet>

#include <memory>

namespace quillmender {

class ActiveWindow;
class X11Connection;

/// Window hints of the EWMH for windows of the toolkit, by their X identifier.
class X11WindowSystem : public QObject, public WindowSystem {
    Q_OBJECT

  public:
    X11WindowSystem(X11Connection &connection, ActiveWindow &activeWindow);

    void applyPanelAttributes(quintptr windowId) override;

    /// A window that is about to be mapped is activated when it is. Renews a panel's attributes,
    /// which window managers forget when a window is hidden.
    void activateWindow(quintptr windowId) override;

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void activateMapped(xcb_window_t window);
    void writeState(xcb_window_t window);
    void requestState(xcb_window_t window);

    X11Connection &connection_;
    ActiveWindow &activeWindow_;
    QSet<xcb_window_t> panels_;
    xcb_window_t awaited_ = XCB_WINDOW_NONE;
    std::unique_ptr<WindowWatch> watch_;
};

} // namespace quillmender
