#include "ui/Neighbours.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace quillmender {

namespace {

/// How far the second is from the first in the arrow's direction; negative when it is elsewhere.
int distance(const QRect &from, const QRect &to, Qt::Key arrow) {
    switch (arrow) {
    case Qt::Key_Up:
        return from.top() - to.bottom() - 1;
    case Qt::Key_Down:
        return to.top() - from.bottom() - 1;
    case Qt::Key_Left:
        return from.left() - to.right() - 1;
    default:
        return to.left() - from.right() - 1;
    }
}

bool isInRow(const QRect &a, const QRect &b) {
    return a.top() <= b.bottom() && b.top() <= a.bottom();
}

} // namespace

std::optional<qsizetype> neighbour(const QList<QRect> &places, qsizetype from, Qt::Key arrow,
                                   int column) {
    const bool isVertical = arrow == Qt::Key_Up || arrow == Qt::Key_Down;
    std::optional<qsizetype> best;
    std::tuple<bool, int, int> least;
    for (qsizetype i = 0; i < places.size(); ++i) {
        const int far = distance(places[from], places[i], arrow);
        if (i == from || far < 0 || (!isVertical && !isInRow(places[from], places[i])))
            continue;
        const bool isBeside =
            isVertical && (column < places[i].left() || column > places[i].right());
        const int aside = isVertical ? std::abs(places[i].center().x() - column) : 0;
        const std::tuple rank(isBeside, far, aside);
        if (!best || rank < least) {
            best = i;
            least = rank;
        }
    }
    return best;
}

} // namespace quillmender
