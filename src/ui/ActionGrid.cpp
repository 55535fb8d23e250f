#include "ui/ActionGrid.h"

#include "ui/ActionTile.h"

#include <algorithm>

namespace quillmender {

ActionGrid::ActionGrid(Theme &theme, QList<GridColumn> columns, QWidget *parent)
    : QWidget(parent),
      theme_(theme),
      columns_(std::move(columns)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

ActionTile *ActionGrid::makeTile() {
    auto *tile = new ActionTile(theme_, this);
    connect(tile, &QPushButton::clicked, this, [this, tile] { Q_EMIT picked(tile->action()); });
    return tile;
}

void ActionGrid::render(const QList<PromptAction> &actions, bool enabled) {
    const bool moreThanEver = tiles_.size() < actions.size();
    while (tiles_.size() < actions.size())
        tiles_.append(makeTile());
    if (moreThanEver)
        Q_EMIT tilesMade();
    for (qsizetype i = 0; i < actions.size(); ++i) {
        tiles_[i]->setAction(actions[i]);
        tiles_[i]->setEnabled(enabled);
        tiles_[i]->setVisible(true);
    }
    for (qsizetype i = actions.size(); i < tiles_.size(); ++i)
        tiles_[i]->setVisible(false);
    if (count_ == actions.size())
        return;
    count_ = actions.size();
    arrange();
    updateGeometry();
}

int ActionGrid::contentHeight() const {
    if (count_ == 0)
        return 0;
    const qsizetype rows = (count_ + columns_.size() - 1) / columns_.size();
    const int spacing = columns_.first().spacing;
    return int(rows) * (tiles_.first()->sizeHint().height() + spacing) - spacing;
}

QSize ActionGrid::sizeHint() const {
    return QSize(572, contentHeight());
}

QSize ActionGrid::minimumSizeHint() const {
    int width = 0;
    for (const GridColumn &column : columns_)
        width += column.minimumWidth + column.spacing;
    return QSize(width - columns_.last().spacing, contentHeight());
}

void ActionGrid::resizeEvent(QResizeEvent *) {
    arrange();
}

void ActionGrid::arrange() {
    if (count_ == 0)
        return;
    int gaps = 0;
    for (qsizetype i = 0; i + 1 < columns_.size(); ++i)
        gaps += columns_[i].spacing;
    const int height = tiles_.first()->sizeHint().height();
    const int share = width() - gaps;
    for (qsizetype i = 0; i < count_; ++i) {
        const qsizetype column = i % columns_.size();
        int x = 0;
        for (qsizetype before = 0; before < column; ++before)
            x += share / int(columns_.size()) + columns_[before].spacing;
        const int y = int(i / columns_.size()) * (height + columns_[column].spacing);
        const int tileWidth = std::max(columns_[column].minimumWidth, share / int(columns_.size()));
        tiles_[i]->setGeometry(x, y, tileWidth, height);
    }
}

} // namespace quillmender
