#pragma once

#include "platform/OwnWindows.h"
#include "platform/Workspace.h"

#include <memory>
#include <optional>

namespace quillmender {

/// The floating panel's window, as the coordinator handles it.
class PickerPanel {
  public:
    PickerPanel() = default;
    PickerPanel(const PickerPanel &) = delete;
    PickerPanel &operator=(const PickerPanel &) = delete;
    virtual ~PickerPanel() = default;

    /// It will be shown soon: what that needs and can be done now is done now.
    virtual void getReady() {}

    /// On the screen of the given window; without one on the screen with the pointer.
    virtual void centre(std::optional<DesktopRect> sourceWindow) = 0;

    /// Shows the panel in front of every application, with the keyboard focus.
    virtual void makeKeyAndOrderFront() = 0;

    /// Hides the panel and keeps it for the next session.
    virtual void orderOut() = 0;

    /// Hides a panel that is shown while something is typed into the source application, where that
    /// gets the focus only then. It comes back with the end of what is returned, unless that was
    /// told that it is not needed any more, or the panel was ordered out meanwhile. Null where
    /// nothing is hidden.
    virtual std::shared_ptr<SteppedAside> stepAside() = 0;
};

} // namespace quillmender
