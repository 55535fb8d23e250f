#pragma once

#include "platform/Appearance.h"
#include "ui/ColorMath.h"

#include <QColor>

#include <optional>

namespace quillmender {

/// The colours of one appearance, from which the looks of all parts are made. Text stands out from
/// window, card and text background by at least 4.5 to 1, whatever the accent.
struct Colors {
    QColor window;
    QColor card;
    QColor cardOutline;
    QColor lifted; ///< ground of what floats above a window: menus, lists, tool tips
    QColor textBackground;
    QColor text;
    QColor secondary;
    QColor error;
    QColor success;
    QColor control;        ///< fill of an ordinary button
    QColor controlOutline; ///< its hairline
    QColor fieldOutline;   ///< seen on all grounds
    QColor accent;         ///< as the desktop has it
    QColor accentFill;     ///< the accent as the ground of text, seen on all grounds
    QColor accentMark;     ///< the accent, darkened or lightened until it is seen on all grounds
    QColor onAccent;       ///< text on `accentFill`
    QColor strongest;      ///< white on dark, black on light: where contrast grows
    QColor knob;           ///< of a switch
    QColor trackOff;
    QColor trackOn;
    bool moreContrast = false;

    /// The house accent stands in for an absent one.
    static Colors make(bool dark, std::optional<QColor> accent,
                       ContrastPreference preference = ContrastPreference::noPreference);
};

} // namespace quillmender
