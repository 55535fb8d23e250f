#pragma once

#include <QColor>
#include <QList>

namespace quillmender {

/// The colour at a fraction of its opacity.
QColor withOpacity(QColor color, double opacity);

/// What is seen of a colour, opaque or not, that lies over an opaque ground.
QColor composited(const QColor &over, const QColor &ground);

/// The opaque colour that lies at `share` (0 to 1) of the way from `a` to `b`.
QColor mixed(const QColor &a, const QColor &b, double share);

/// Contrast ratio of two opaque colours as WCAG defines it, 1 to 21.
double contrast(const QColor &a, const QColor &b);

/// The colour itself, or no more of `towards` mixed in than it takes to stand out from every ground
/// by that ratio.
QColor visibleOn(const QColor &color, const QList<QColor> &grounds, double ratio,
                 const QColor &towards);

/// The weakest mixture of the first ground and the colour that still stands out from every ground
/// by that ratio.
QColor faded(const QColor &color, const QList<QColor> &grounds, double ratio);

} // namespace quillmender
