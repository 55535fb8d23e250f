#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/keys/ChordWatch.h"
#include "platform/linux/x11/keys/X11Chords.h"
#include "platform/linux/x11/keys/X11HotKeys.h"
#include "platform/linux/x11/keys/X11Keymap.h"
#include "platform/linux/x11/selection/X11Pasteboard.h"
#include "platform/linux/x11/windows/ActiveWindow.h"
#include "platform/linux/x11/windows/WindowPing.h"
#include "platform/linux/x11/windows/WindowStanding.h"
#include "platform/linux/x11/windows/X11FrontmostSource.h"
#include "platform/linux/x11/windows/X11Workspace.h"

#include <memory>

namespace quillmender::x11 {

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

} // namespace quillmender::x11
