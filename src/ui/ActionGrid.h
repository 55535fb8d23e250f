#pragma once

#include "model/PromptAction.h"
#include "ui/GridColumn.h"
#include "ui/Theme.h"

#include <QList>
#include <QWidget>

namespace quillmender {

class ActionTile;

/// The actions as tiles, row by row in their order. Tiles are made when first needed and reused.
class ActionGrid : public QWidget {
    Q_OBJECT

  public:
    ActionGrid(Theme &theme, QList<GridColumn> columns, QWidget *parent = nullptr);

    /// Shows these actions, all of them enabled or none.
    void render(const QList<PromptAction> &actions, bool enabled);
    /// Every tile made so far, also the hidden ones.
    const QList<ActionTile *> &tiles() const { return tiles_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// A row is as high as the tile in it that has most to tell.
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  Q_SIGNALS:
    void tilesMade();
    void picked(const quillmender::PromptAction &action);

  protected:
    void resizeEvent(QResizeEvent *event) override;

  private:
    ActionTile *makeTile();
    void arrange();
    int tileWidth(qsizetype column, int width) const;
    int rowHeight(qsizetype first, int width) const;

    Theme &theme_;
    QList<GridColumn> columns_;
    QList<ActionTile *> tiles_; ///< the first `count_` are shown
    qsizetype count_ = 0;
};

} // namespace quillmender
