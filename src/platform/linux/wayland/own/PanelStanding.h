#pragma once

#include <memory>

class QWindow;

namespace quillmender::wayland {

class KeyboardWatch;

/// How the panel's window stands among all others, and how it comes by the keyboard.
class PanelStanding {
  public:
    PanelStanding() = default;
    PanelStanding(const PanelStanding &) = delete;
    PanelStanding &operator=(const PanelStanding &) = delete;
    virtual ~PanelStanding() = default;

    /// Its native window has been made, and is not on the screen.
    virtual void prepare(QWindow &panel) = 0;

    /// It is about to be put on the screen; `takesKeyboard` is false where the user may be typing
    /// elsewhere.
    virtual void aboutToShow(bool takesKeyboard) = 0;

    /// It is on the screen, and the user wants to type into it.
    virtual void takeKeyboard() = 0;

    /// Another window of this program is to be used now, until the next `takeKeyboard`.
    virtual void giveWay() = 0;
};

/// A surface of the layer shell. Null where this build has none. To be called where the compositor
/// has that shell. The keyboard watch outlives it.
std::unique_ptr<PanelStanding> makeLayerPanel(KeyboardWatch &keyboard);

} // namespace quillmender::wayland
