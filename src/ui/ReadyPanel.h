#pragma once

#include "platform/OwnWindows.h"
#include "ui/Theme.h"

#include <memory>

namespace quillmender {

class ActionPanel;
class ActionPickerModel;
class ActionPickerView;

/// The action picker's window before it is wanted. It can be made piece by piece, so that nobody
/// waits for fonts, symbols and the native window when it is. Shows nothing.
class ReadyPanel {
  public:
    /// All outlive the panel.
    ReadyPanel(ActionPickerModel &model, Theme &theme, OwnWindows &ownWindows);
    ReadyPanel(const ReadyPanel &) = delete;
    ReadyPanel &operator=(const ReadyPanel &) = delete;
    ~ReadyPanel();

    /// Makes the next piece, which takes some milliseconds. False when all are made.
    bool prepareMore();

    /// The content of the panel; made now if it was not.
    ActionPickerView *view();

    /// The panel; made now if it was not. To be called once, and last.
    std::unique_ptr<ActionPanel> take();

  private:
    enum class Piece { style, fonts, view, panel, content, layout, nativeWindow, picture, none };

    void makeView();
    void makePanel();
    bool loadNextFont();
    bool drawNextBand();

    ActionPickerModel &model_;
    Theme &theme_;
    OwnWindows &ownWindows_;
    Piece next_ = Piece::style;
    int styles_ = 0;                             ///< whose fonts are loaded
    int drawn_ = 0;                              ///< lines of the picture
    std::unique_ptr<ActionPickerView> unplaced_; ///< the view while there is no panel
    ActionPickerView *view_ = nullptr;
    std::unique_ptr<ActionPanel> panel_;
};

} // namespace quillmender
