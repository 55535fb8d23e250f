#pragma once

#include <QSize>

/// The one place for the sizes that controls and surfaces share, in device-independent pixels.
namespace quillmender::metrics {

inline constexpr qreal hairline = 1;
inline constexpr qreal ringWidth = 2;

inline constexpr qreal cardRadius = 14; ///< of cards and tiles
inline constexpr qreal editorRadius = 12;
inline constexpr qreal controlRadius = 8;
inline constexpr qreal floatingRadius = 9; ///< of menus and lists
inline constexpr qreal itemRadius = 5;
inline constexpr qreal toolTipRadius = 6;

inline constexpr int cardPadding = 16;
/// Above the first and beneath the last line of a text, which have air of their own.
inline constexpr int cardTextPadding = 8;

inline constexpr int controlHeight = 32;   ///< at least; it grows with the text
inline constexpr int controlTextRoom = 12; ///< above and beneath the text together
inline constexpr int buttonPadding = 16;
inline constexpr int buttonWidth = 72; ///< at least, as it likes to be
inline constexpr int narrowestButton = 48;
inline constexpr int prominentRingInset = 2;
/// From the edge of a field, an editor or a pop-up button to its text.
inline constexpr int textInset = 12;
/// The toolkit's field has two pixels of its own before its text.
inline constexpr int fieldPadding = textInset - 2;
inline constexpr char16_t passwordCharacter = u'\u2022';
inline constexpr int fieldWidth = 240;
inline constexpr int narrowestField = 80;
inline constexpr int editorFrame = 2;
inline constexpr int editorPadding = 6; ///< around what scrolls
inline constexpr int documentMargin = textInset - editorFrame - editorPadding;
inline constexpr int editorHeight = 96; ///< at least

inline constexpr int popUpWidth = 120; ///< of the text, at least
inline constexpr int chevronArea = 28;

inline constexpr QSize switchTrack(40, 24);
inline constexpr int switchKnobInset = 3;
inline constexpr int switchGap = 12;
inline constexpr int switchMargin = 3; ///< for the focus ring
inline constexpr int switchHeight = 28;
inline constexpr int switchTextRoom = 8;

inline constexpr int scrollBarBreadth = 10;
inline constexpr int scrollThumbBreadth = 6;
inline constexpr int shortestScrollThumb = 24;
inline constexpr int scrollEndMargin = 2;

inline constexpr int floatingPadding = 5;
inline constexpr int itemPadding = 10;
inline constexpr int itemTextRoom = 10;
inline constexpr int checkArea = 20;
inline constexpr int separatorHeight = 9;
inline constexpr int shortcutGap = 24;
inline constexpr int toolTipPadding = 6;

} // namespace quillmender::metrics
