#pragma once

#include "ui/Colors.h"

namespace quillmender {

/// What is painted in colours of its own.
enum class Part {
    label,
    symbol,
    button,
    prominentButton,
    destructiveButton,
    quietButton,
    quietDestructiveButton,
    field,
    editor,
    selection,
    popUpButton,
    switchOff,
    switchOn,
    scrollThumb,
    menu,
    menuItem,
    toolTip,
    tile,
    row
};

inline constexpr Part lastPart = Part::row;

/// Where the focus ring lies: on the edge between fill and ground, on the fill alone, or around the
/// part.
enum class RingPlace { edge, inside, around };

enum class State { rest, hovered, pressed, disabled };

inline constexpr State lastState = State::disabled;

/// The colours of a part in one state; those that it does not paint are invalid. All are opaque,
/// except outlines that only decorate.
struct Look {
    QColor fill;
    QColor outline;
    QColor halo; ///< a second, fainter outline around the first
    QColor text;
    QColor secondaryText;
    QColor placeholder;
    QColor error;
    QColor success;
    QColor symbol;             ///< also a chevron, a check mark, the knob of a switch
    QColor ring;               ///< around what has the keyboard focus
    bool outlineTells = false; ///< without its outline nobody would see where the part is
    bool fillTells = false;    ///< the same of its fill
    RingPlace ringPlace = RingPlace::edge;

    friend bool operator==(const Look &, const Look &) = default;
};

Look lookOf(Part part, State state, const Colors &colors);

/// On what the part may stand.
QList<QColor> groundsOf(Part part, const Colors &colors);

} // namespace quillmender
