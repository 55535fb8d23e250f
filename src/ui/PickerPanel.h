#pragma once

#include "platform/Workspace.h"

#include <optional>

namespace quillmender {

/// The floating panel's window, as the coordinator handles it.
class PickerPanel {
  public:
    PickerPanel() = default;
    PickerPanel(const PickerPanel &) = delete;
    PickerPanel &operator=(const PickerPanel &) = delete;
    virtual ~PickerPanel() = default;

    /// On the screen of the given window; without one on the screen with the pointer.
    virtual void centre(std::optional<DesktopRect> sourceWindow) = 0;

    /// Shows the panel in front of every application, with the keyboard focus.
    virtual void makeKeyAndOrderFront() = 0;

    /// Hides the panel and keeps it for the next session.
    virtual void orderOut() = 0;
};

} // namespace quillmender
