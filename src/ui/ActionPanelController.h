#pragma once

#include "platform/OwnWindows.h"
#include "ui/PickerPanel.h"
#include "ui/Theme.h"

#include <QTimer>

#include <memory>
#include <optional>

namespace quillmender {

class ActionPanel;
class ActionPickerModel;
class ActionPickerView;
class LateAppearance;
class PickerKeys;
class ReadyPanel;
class ScreenFollower;

/// Owns the one panel with the action picker. The panel is made once and reused; it is ordered
/// out, never destroyed, when it is closed.
class ActionPanelController : public PickerPanel {
  public:
    /// Model, theme and own windows outlive the controller.
    ActionPanelController(ActionPickerModel &model, Theme &theme, OwnWindows &ownWindows);

    /// Takes over what has been made of the panel.
    ActionPanelController(ReadyPanel &ready, OwnWindows &ownWindows);
    ~ActionPanelController() override;

    void getReady() override;

    /// Centres the panel on the screen that shows most of that window (device pixels); without one,
    /// on the screen that the user works on. A screen smaller than the panel makes the panel
    /// smaller.
    void centre(std::optional<DesktopRect> sourceWindow) override;

    /// Shows the panel, up to date, above others, with the keyboard focus on the first
    /// action.
    void makeKeyAndOrderFront() override;

    /// While something is being typed into the panel it stays until the hand rests: the next keys
    /// would go to the other application, where the answer is selected.
    void orderOut() override;
    std::shared_ptr<SteppedAside> stepAside() override;

    bool isVisible() const;
    ActionPanel *panel() const { return panel_.get(); }
    ActionPickerView *view() const { return view_; }

  private:
    void paintAhead();
    void hideAtRest();

    OwnWindows &ownWindows_;
    ActionPickerView *view_; ///< owned by the panel
    std::unique_ptr<ActionPanel> panel_;
    std::unique_ptr<PickerKeys> keys_; ///< goes before the controls that it watches
    std::unique_ptr<LateAppearance> appearance_;
    std::unique_ptr<ScreenFollower> follower_;
    std::weak_ptr<SteppedAside> aside_;
    QTimer closing_;
};

} // namespace quillmender
