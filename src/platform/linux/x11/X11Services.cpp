#include "platform/linux/x11/X11Services.h"

namespace quillmender::x11 {

std::unique_ptr<X11Services> X11Services::create(const QByteArray &displayName) {
    auto connection = X11Connection::open(displayName);
    if (!connection)
        return nullptr;
    auto services = std::make_unique<X11Services>();
    X11Services &all = *services;
    all.connection = std::move(connection);
    all.keymap = std::make_unique<X11Keymap>(*all.connection);
    all.activeWindow = std::make_unique<ActiveWindow>(*all.connection);
    all.frontmost = std::make_unique<X11FrontmostSource>(*all.connection, *all.activeWindow);
    all.ping = std::make_unique<WindowPing>(*all.connection);
    all.chordWatch = std::make_unique<ChordWatch>(*all.connection, *all.ping);
    all.pasteboard = std::make_unique<X11Pasteboard>(*all.connection, *all.chordWatch);
    all.chords = std::make_unique<X11Chords>(ChordSurroundings{*all.connection, *all.keymap,
                                                               *all.activeWindow, *all.frontmost,
                                                               *all.ping, *all.chordWatch});
    all.hotKeys = std::make_unique<X11HotKeys>(*all.connection, *all.keymap);
    all.workspace = std::make_unique<X11Workspace>(*all.connection, *all.activeWindow);
    all.windowStanding = std::make_unique<WindowStanding>(*all.connection, *all.activeWindow);
    // What was subscribed to counts from now on, not from the loop's first sleep.
    xcb_flush(all.connection->xcb());
    return services;
}

} // namespace quillmender::x11
