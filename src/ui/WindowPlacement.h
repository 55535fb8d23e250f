#pragma once

#include <QSize>

class QScreen;
class QWidget;

namespace quillmender {

/// The screen with the pointer, else the first one; null without any.
QScreen *screenInUse();

/// Fixes the window's content at that size, or at what fits on the screen with `reservedFrame` or
/// the actual frame around it, and centres the content in the screen's available area, with the
/// title bar inside it.
void centreOnScreen(QWidget &window, QScreen &screen, QSize contentSize, QSize reservedFrame = {});

} // namespace quillmender
