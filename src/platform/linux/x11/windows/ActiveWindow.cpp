#include "platform/linux/x11/windows/ActiveWindow.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/ClientMessage.h"
#include "platform/linux/x11/windows/WindowOwnership.h"
#include "platform/linux/x11/windows/WindowProcess.h"

namespace quillmender::x11 {

ActiveWindow::ActiveWindow(X11Connection &connection) : connection_(connection) {
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_.xcb(), connection_.root(), XCB_CW_EVENT_MASK, &events);
    connect(&connection_, &X11Connection::eventReceived, this, &ActiveWindow::handleEvent);
    remember();
}

void ActiveWindow::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_DESTROY_NOTIFY)
        noteDestroyed(eventCast<xcb_destroy_notify_event_t>(event).window);
    if (eventType(event) != XCB_PROPERTY_NOTIFY)
        return;
    const auto &change = eventCast<xcb_property_notify_event_t>(event);
    if (change.window != connection_.root() ||
        change.atom != connection_.atom("_NET_ACTIVE_WINDOW"))
        return;
    remember();
    Q_EMIT changed();
}

void ActiveWindow::remember() {
    const xcb_window_t window = current();
    const bool isKnown = last_ && last_->window() == window && isStillItself(connection_, *last_);
    if (window == XCB_WINDOW_NONE || isKnown || !isForeign(window))
        return;
    const auto application =
        std::make_shared<X11RunningApplication>(window, processOfWindow(connection_, window));
    last_ = application;
    if (application->processId() != 0)
        return;
    std::erase_if(nameless_, [](const Nameless &one) { return one.application.expired(); });
    nameless_.push_back({application, std::make_unique<WindowWatch>(connection_, window)});
}

void ActiveWindow::noteDestroyed(xcb_window_t window) {
    std::erase_if(nameless_, [window](const Nameless &one) {
        const auto application = one.application.lock();
        if (application && application->window() == window)
            application->setGone();
        // The watch ends with its window: the next one with the number wants one of its own.
        return !application || application->isGone();
    });
}

xcb_window_t ActiveWindow::current() const {
    if (hasWindowManager())
        return readCardinal(connection_, connection_.root(),
                            connection_.atom("_NET_ACTIVE_WINDOW"));
    return topLevelOf(focus());
}

std::shared_ptr<const X11RunningApplication> ActiveWindow::frontmost() {
    if (isLastStillInFront())
        return last_;
    manager_ =
        readCardinal(connection_, connection_.root(), connection_.atom("_NET_SUPPORTING_WM_CHECK"));
    remember();
    const bool isThere = last_ && isViewable(last_->window()) && isStillItself(connection_, *last_);
    return isThere ? last_ : nullptr;
}

// What it mostly is, told by one answer of the server. Whatever is otherwise is looked into.
bool ActiveWindow::isLastStillInFront() const {
    if (!last_ || manager_ == XCB_WINDOW_NONE || last_->processId() == 0)
        return false;
    const xcb_atom_t check = connection_.atom("_NET_SUPPORTING_WM_CHECK");
    const CardinalQuestion announced(connection_, connection_.root(), check);
    const CardinalQuestion itself(connection_, manager_, check);
    const CardinalQuestion active(connection_, connection_.root(),
                                  connection_.atom("_NET_ACTIVE_WINDOW"));
    const ProcessQuestion process(connection_, last_->window());
    const auto attributesCookie = xcb_get_window_attributes(connection_.xcb(), last_->window());
    const auto attributes =
        replyTo(connection_.xcb(), xcb_get_window_attributes_reply, attributesCookie);
    const bool isManaged = announced.answer() == manager_;
    const bool isManagerThere = itself.answer() == manager_;
    const bool isActive = active.answer() == last_->window();
    const bool isItself = process.answer() == last_->processId();
    return isManaged && isManagerThere && isActive && isItself && attributes &&
           attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool ActiveWindow::isInFront(xcb_window_t window) const {
    // The announcement may precede the focus, and it is the focus that keys go to.
    const xcb_window_t focused = focus();
    return focused != XCB_WINDOW_NONE && current() == window &&
           isSameApplication(connection_, focused, window);
}

void ActiveWindow::activate(xcb_window_t window) {
    if (hasWindowManager()) {
        constexpr quint32 pager = 2;
        // The time of the hot key would be too old once the user has clicked in the panel: the
        // server ignores a change of focus that is older than the last one.
        const xcb_timestamp_t time = connection_.serverTime();
        showDesktopOf(window, time);
        sendToWindowManager(connection_, window, "_NET_ACTIVE_WINDOW",
                            {pager, time, XCB_WINDOW_NONE, 0, 0});
    } else {
        const quint32 above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection_.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        xcb_set_input_focus(connection_.xcb(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    }
    xcb_flush(connection_.xcb());
}

void ActiveWindow::showDesktopOf(xcb_window_t window, xcb_timestamp_t time) {
    const auto desktop = readProperty(connection_, window, connection_.atom("_NET_WM_DESKTOP"));
    const quint32 wanted = desktop ? desktop->cardinals().value(0, allDesktops) : allDesktops;
    const xcb_atom_t shown = connection_.atom("_NET_CURRENT_DESKTOP");
    // Some window managers activate nothing on a desktop that is not shown; task bars ask for both.
    if (wanted != allDesktops && wanted != readCardinal(connection_, connection_.root(), shown))
        sendToWindowManager(connection_, connection_.root(), "_NET_CURRENT_DESKTOP",
                            {wanted, time, 0, 0, 0});
}

bool ActiveWindow::isViewable(xcb_window_t window) const {
    const auto reply = replyTo(connection_.xcb(), xcb_get_window_attributes_reply,
                               xcb_get_window_attributes(connection_.xcb(), window));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool ActiveWindow::hasWindowManager() const {
    // The property outlives a window manager that died; its window does not.
    const xcb_atom_t check = connection_.atom("_NET_SUPPORTING_WM_CHECK");
    const xcb_window_t manager = readCardinal(connection_, connection_.root(), check);
    return manager != XCB_WINDOW_NONE && readCardinal(connection_, manager, check) == manager;
}

bool ActiveWindow::isForeign(xcb_window_t window) const {
    const auto type = readProperty(connection_, window, connection_.atom("_NET_WM_WINDOW_TYPE"));
    const QList<quint32> types = type ? type->cardinals() : QList<quint32>();
    // A panel or the desktop itself is no application that text is taken from.
    return !types.contains(connection_.atom("_NET_WM_WINDOW_TYPE_DOCK")) &&
           !types.contains(connection_.atom("_NET_WM_WINDOW_TYPE_DESKTOP")) &&
           !isSameApplication(connection_, window, connection_.window());
}

xcb_window_t ActiveWindow::focus() const {
    const auto reply = replyTo(connection_.xcb(), xcb_get_input_focus_reply,
                               xcb_get_input_focus(connection_.xcb()));
    if (!reply)
        return XCB_WINDOW_NONE;
    const bool followsPointer =
        reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT || reply->focus == connection_.root();
    return followsPointer ? underPointer() : reply->focus;
}

xcb_window_t ActiveWindow::underPointer() const {
    xcb_window_t deepest = XCB_WINDOW_NONE;
    xcb_window_t child = connection_.root();
    while (child != XCB_WINDOW_NONE) {
        const auto pointer = replyTo(connection_.xcb(), xcb_query_pointer_reply,
                                     xcb_query_pointer(connection_.xcb(), child));
        if (child != connection_.root())
            deepest = child;
        child = pointer ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
    }
    return deepest;
}

xcb_window_t ActiveWindow::topLevelOf(xcb_window_t window) const {
    // A window manager marks what it has put into a frame of its own.
    const xcb_atom_t mark = connection_.atom("WM_STATE");
    while (window != XCB_WINDOW_NONE && !readProperty(connection_, window, mark)) {
        const auto tree = replyTo(connection_.xcb(), xcb_query_tree_reply,
                                  xcb_query_tree(connection_.xcb(), window));
        if (!tree)
            return XCB_WINDOW_NONE;
        if (tree->parent == connection_.root() || tree->parent == XCB_WINDOW_NONE)
            return window;
        window = tree->parent;
    }
    return window;
}

} // namespace quillmender::x11
