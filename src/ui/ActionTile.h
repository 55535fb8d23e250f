#pragma once

#include "model/PromptAction.h"
#include "ui/Button.h"

#include <optional>

namespace quillmender {

/// One action of the grid: symbol, title, subtitle. Texts that do not fit end in an ellipsis and
/// are told in full by the tool tip.
class ActionTile : public Button {
    Q_OBJECT

  public:
    ActionTile(Theme &theme, QWidget *parent = nullptr);

    const PromptAction &action() const { return *action_; }
    /// Whether that was another one than before.
    bool setAction(const PromptAction &action);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// What its texts need there, two lines of each at most.
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    QString unreadablePart() const override;

  private:
    int textWidth(int width) const;
    int heightOf(int titleLines, int subtitleLines) const;

    std::optional<PromptAction> action_; ///< set before the tile is shown
    QString title_;
    QString subtitle_;
    // The last answer of heightForWidth: layouts ask again and again.
    mutable int measuredWidth_ = -1;
    mutable int measuredHeight_ = 0;
    QFont titleFont_;
    QFont subtitleFont_;
};

} // namespace quillmender
