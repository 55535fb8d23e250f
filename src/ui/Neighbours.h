#pragma once

#include <QList>
#include <QRect>

#include <optional>

namespace quillmender {

/// Where an arrow leads from a control to another: both are indices of `places`. Up and Down keep
/// to the column that the eye is in, Left and Right to the row; none of them goes round.
std::optional<qsizetype> neighbour(const QList<QRect> &places, qsizetype from, Qt::Key arrow,
                                   int column);

} // namespace quillmender
