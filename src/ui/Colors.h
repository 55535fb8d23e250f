#pragma once

#include <QColor>

#include <optional>

namespace quillmender {

/// The colours of one appearance. Everything that carries meaning stands out from what is beneath
/// it by at least 4.5 to 1, whatever the accent.
struct Colors {
    QColor window;
    QColor card;
    QColor cardOutline;
    QColor textBackground;
    QColor text;
    QColor secondary;
    QColor error;
    QColor success;
    QColor control;        ///< fill of an ordinary button
    QColor controlOutline; ///< its hairline
    QColor accent;
    QColor accentMark; ///< the accent, darkened or lightened until it is seen on window and card
    QColor onAccent;   ///< text on a surface of the accent

    /// The house accent stands in for an absent one.
    static Colors make(bool dark, std::optional<QColor> accent);
};

/// The colour at a fraction of its opacity.
QColor withOpacity(QColor color, double opacity);

/// Contrast ratio of two opaque colours as WCAG defines it, 1 to 21.
double contrast(const QColor &a, const QColor &b);

} // namespace quillmender
