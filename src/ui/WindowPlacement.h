#pragma once

#include <QSize>

class QScreen;
class QWidget;

namespace quillmender {

class OwnWindows;

/// The screen that the user works on, as the window system tells; else the one with the pointer,
/// else the first one. Null without any.
QScreen *screenInUse(OwnWindows &ownWindows);

/// What a window's content may take on that screen with its frame around it: the frame that the
/// window manager has told of, else room for a usual one.
QSize roomOnScreen(const QWidget &window, const QScreen &screen);

/// Fixes the window's content at that size, or at what there is room for, and centres the content
/// in the screen's available area, with the whole frame inside it.
void centreOnScreen(QWidget &window, QScreen &screen, QSize contentSize);

} // namespace quillmender
