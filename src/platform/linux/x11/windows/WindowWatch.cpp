#include "platform/linux/x11/windows/WindowWatch.h"

#include "platform/linux/x11/X11Connection.h"

namespace quillmender::x11 {

namespace {

void select(const X11Connection &connection, xcb_window_t window, quint32 events) {
    xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &events);
}

} // namespace

WindowWatch::WindowWatch(X11Connection &connection, xcb_window_t window)
    : connection_(connection),
      window_(window) {
    if (++connection_.watchCounts()[window_] == 1)
        select(connection_, window_,
               XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

WindowWatch::~WindowWatch() {
    if (--connection_.watchCounts()[window_] > 0)
        return;
    connection_.watchCounts().remove(window_);
    select(connection_, window_, XCB_EVENT_MASK_NO_EVENT);
}

} // namespace quillmender::x11
