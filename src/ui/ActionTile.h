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
    void setAction(const PromptAction &action);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    QString unreadablePart() const override;

  private:
    int textWidth() const;

    std::optional<PromptAction> action_; ///< set before the tile is shown
    QString title_;
    QString subtitle_;
    QFont titleFont_;
    QFont subtitleFont_;
};

} // namespace quillmender
