#pragma once

#include "platform/linux/x11/ActiveWindow.h"
#include "platform/linux/x11/ChordWatch.h"
#include "platform/linux/x11/WindowPing.h"
#include "platform/linux/x11/WindowStanding.h"
#include "platform/linux/x11/X11Chords.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11FrontmostSource.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/x11/X11Keymap.h"
#include "platform/linux/x11/X11Pasteboard.h"
#include "platform/linux/x11/X11Workspace.h"

#include <memory>

namespace quillmender {

/// Every service of an X11 session over one connection. What refers to another is declared after
/// it; each can be moved out, and then needs what is left in this object all the same.
struct X11Services {
    /// Null when there is no X server. An empty name is the session's display.
    static std::unique_ptr<X11Services> create(const QByteArray &displayName = {});

    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11Keymap> keymap;
    std::unique_ptr<ActiveWindow> activeWindow;
    std::unique_ptr<X11FrontmostSource> frontmost;
    std::unique_ptr<WindowPing> ping;
    std::unique_ptr<ChordWatch> chordWatch;
    std::unique_ptr<X11Pasteboard> pasteboard;
    std::unique_ptr<X11Chords> chords;
    std::unique_ptr<X11HotKeys> hotKeys;
    std::unique_ptr<X11Workspace> workspace;
    std::unique_ptr<WindowStanding> windowStanding;
};

} // namespace quillmender
