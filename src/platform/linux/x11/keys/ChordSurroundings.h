#pragma once

namespace quillmender::x11 {

class ActiveWindow;
class ChordWatch;
class WindowPing;
class X11Connection;
class X11FrontmostSource;
class X11Keymap;

/// Whom a chord asks on its way to the application, and who is told that it is out.
struct ChordSurroundings {
    X11Connection &connection;
    X11Keymap &keymap;
    ActiveWindow &activeWindow;
    X11FrontmostSource &frontmost;
    WindowPing &ping;
    ChordWatch &watch;
};

} // namespace quillmender::x11
