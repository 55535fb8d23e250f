#include "ui/ActionGrid.h"

#include "ui/ActionTile.h"

#include <algorithm>

namespace quillmender {

ActionGrid::ActionGrid(Theme &theme, QList<GridColumn> columns, QWidget *parent)
    : QWidget(parent),
      theme_(theme),
      columns_(std::move(columns)) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
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
    bool isChanged = count_ != actions.size();
    for (qsizetype i = 0; i < actions.size(); ++i) {
        isChanged = tiles_[i]->setAction(actions[i]) || isChanged;
        tiles_[i]->setEnabled(enabled);
        tiles_[i]->setVisible(true);
    }
    for (qsizetype i = actions.size(); i < tiles_.size(); ++i)
        tiles_[i]->setVisible(false);
    if (!isChanged)
        return;
    count_ = actions.size();
    arrange();
    updateGeometry();
}

int ActionGrid::tileWidth(qsizetype column, int width) const {
    int gaps = 0;
    for (qsizetype i = 0; i + 1 < columns_.size(); ++i)
        gaps += columns_[i].spacing;
    return std::max(columns_[column].minimumWidth, (width - gaps) / int(columns_.size()));
}

int ActionGrid::rowHeight(qsizetype first, int width) const {
    int height = 0;
    for (qsizetype i = first; i < std::min(first + columns_.size(), count_); ++i)
        height = std::max(height, tiles_[i]->heightForWidth(tileWidth(i - first, width)));
    return height;
}

int ActionGrid::heightForWidth(int width) const {
    const int spacing = columns_.first().spacing;
    int height = 0;
    for (qsizetype first = 0; first < count_; first += columns_.size())
        height += (first > 0 ? spacing : 0) + rowHeight(first, width);
    return height;
}

QSize ActionGrid::sizeHint() const {
    constexpr int usualWidth = 572;
    return QSize(usualWidth, heightForWidth(usualWidth));
}

QSize ActionGrid::minimumSizeHint() const {
    int width = 0;
    for (const GridColumn &column : columns_)
        width += column.minimumWidth + column.spacing;
    return QSize(width - columns_.last().spacing, sizeHint().height());
}

void ActionGrid::resizeEvent(QResizeEvent *) {
    arrange();
}

void ActionGrid::arrange() {
    int y = 0;
    for (qsizetype first = 0; first < count_; first += columns_.size()) {
        const int height = rowHeight(first, width());
        int x = 0;
        for (qsizetype i = first; i < std::min(first + columns_.size(), count_); ++i) {
            const qsizetype column = i - first;
            const int wide = tileWidth(column, width());
            tiles_[i]->setGeometry(x, y, wide, height);
            x += wide + columns_[column].spacing;
        }
        y += height + columns_.first().spacing;
    }
}

} // namespace quillmender
