#pragma once

#include "platform/linux/Obstacle.h"

#include <QCoroTask>
#include <xcb/xcb.h>

#include <memory>

namespace quillmender::x11 {

class X11Connection;
class X11LentText;

/// Makes the text one for the terminal with this window, if that takes it.
QCoro::Task<Obstacle> lendToTerminal(X11Connection &connection, std::shared_ptr<X11LentText> text,
                                     xcb_window_t window);

/// To be asked just before the keys: later the terminal would paste what is there by then, with the
/// line ends that it has.
Obstacle forbidsTerminalPaste(X11Connection &connection, const X11LentText &text,
                              xcb_window_t window);

} // namespace quillmender::x11
