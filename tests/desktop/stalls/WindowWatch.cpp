#include "desktop/stalls/WindowWatch.h"

#include <xcb/xfixes.h>

#include <array>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quillmender {

using harness::XcbPointer;

WindowWatch::WindowWatch(const QString &display, Observer observer)
    : connection_(display),
      observer_(std::move(observer)),
      stopEvent_(::eventfd(0, EFD_CLOEXEC)) {
    xcb_connection_t *const xcb = connection_.get();
    const XcbPointer<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(xcb, xcb_xfixes_query_version(xcb, 5, 0), nullptr));
    clipboardEvent_ =
        xcb_get_extension_data(xcb, &xcb_xfixes_id)->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(xcb, connection_.root(), connection_.atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb, connection_.root(), XCB_CW_EVENT_MASK, &events);
    connection_.atom("_NET_ACTIVE_WINDOW");
    connection_.roundTrip();
    thread_ = std::thread(&WindowWatch::run, this);
}

WindowWatch::~WindowWatch() {
    constexpr quint64 once = 1;
    [[maybe_unused]] const ssize_t written = ::write(stopEvent_, &once, sizeof(once));
    thread_.join();
    ::close(stopEvent_);
}

void WindowWatch::run() {
    xcb_connection_t *const xcb = connection_.get();
    const xcb_atom_t activeWindow = connection_.atom("_NET_ACTIVE_WINDOW");
    std::array<pollfd, 2> sources{
        {{xcb_get_file_descriptor(xcb), POLLIN, 0}, {stopEvent_, POLLIN, 0}}};
    while (xcb_connection_has_error(xcb) == 0 && sources[1].revents == 0) {
        while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(xcb)}) {
            const int type = event->response_type & 0x7f;
            if (type == clipboardEvent_)
                observer_(Event::clipboardTaken);
            else if (type == XCB_PROPERTY_NOTIFY &&
                     reinterpret_cast<const xcb_property_notify_event_t &>(*event).atom ==
                         activeWindow)
                observer_(Event::activeWindowChanged);
        }
        ::poll(sources.data(), sources.size(), -1);
    }
}

} // namespace quillmender
