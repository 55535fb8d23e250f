#include "platform/linux/x11/windows/WindowStanding.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/ActiveWindow.h"
#include "platform/linux/x11/windows/ClientMessage.h"

namespace quillmender::x11 {

namespace {

/// A window manager maps a window inside its frame before it maps the frame: such a window is not
/// viewable yet, but its map event is over.
bool isMapped(const X11Connection &connection, xcb_window_t window) {
    const auto reply = replyTo(connection.xcb(), xcb_get_window_attributes_reply,
                               xcb_get_window_attributes(connection.xcb(), window));
    return reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
}

constexpr std::array panelStates{"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_STICKY",
                                 "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"};

} // namespace

WindowStanding::WindowStanding(X11Connection &connection, ActiveWindow &activeWindow)
    : connection_(connection),
      activeWindow_(activeWindow) {
    connect(&connection_, &X11Connection::eventReceived, this, &WindowStanding::handleEvent);
}

void WindowStanding::applyPanelAttributes(xcb_window_t window) {
    panels_.insert(window);
    writeCardinals(connection_, window, connection_.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
                   {connection_.atom("_NET_WM_WINDOW_TYPE_DIALOG")});
    if (isMapped(connection_, window))
        requestState(window);
    else
        writeState(window);
    xcb_flush(connection_.xcb());
}

void WindowStanding::askForFrame(xcb_window_t window) {
    sendToWindowManager(connection_, window, "_NET_REQUEST_FRAME_EXTENTS", {});
    xcb_flush(connection_.xcb());
}

void WindowStanding::activate(xcb_window_t window) {
    watch_.reset();
    // Watched before it is asked, so that it cannot be mapped unseen in between.
    watch_ = std::make_unique<WindowWatch>(connection_, window);
    awaited_ = window;
    if (isMapped(connection_, window))
        activateMapped(window);
    xcb_flush(connection_.xcb());
}

bool WindowStanding::hasCompositor() {
    const auto reply =
        replyTo(connection_.xcb(), xcb_get_selection_owner_reply,
                xcb_get_selection_owner(connection_.xcb(), connection_.atom("_NET_WM_CM_S0")));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void WindowStanding::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) != XCB_MAP_NOTIFY || awaited_ == XCB_WINDOW_NONE)
        return;
    if (eventCast<xcb_map_notify_event_t>(event).window == awaited_)
        activateMapped(awaited_);
}

void WindowStanding::activateMapped(xcb_window_t window) {
    awaited_ = XCB_WINDOW_NONE;
    watch_.reset();
    if (panels_.contains(window))
        requestState(window);
    activeWindow_.activate(window);
}

void WindowStanding::writeState(xcb_window_t window) {
    QList<quint32> states;
    for (const char *state : panelStates)
        states.append(connection_.atom(state));
    writeCardinals(connection_, window, connection_.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, states);
    writeCardinals(connection_, window, connection_.atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL,
                   {allDesktops});
}

void WindowStanding::requestState(xcb_window_t window) {
    constexpr quint32 add = 1;
    constexpr quint32 application = 1;
    for (std::size_t i = 0; i < panelStates.size(); i += 2)
        sendToWindowManager(connection_, window, "_NET_WM_STATE",
                            {add, connection_.atom(panelStates[i]),
                             connection_.atom(panelStates[i + 1]), application, 0});
    sendToWindowManager(connection_, window, "_NET_WM_DESKTOP",
                        {allDesktops, application, 0, 0, 0});
}

} // namespace quillmender::x11
