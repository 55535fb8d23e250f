#include "desktop/x11/TestWindow.h"

#include <cstring>

namespace quillmender::x11 {

TestWindow::TestWindow(X11Connection &connection, const char *wmClass)
    : connection_(connection),
      id_(xcb_generate_id(connection.xcb())) {
    const quint32 events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(connection_.xcb(), XCB_COPY_FROM_PARENT, id_, connection_.root(), 10, 20, 200,
                      100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    setClass(QByteArray(wmClass) + '\0' + wmClass + '\0');
    connect(&connection_, &X11Connection::eventReceived, this,
            [this](const xcb_generic_event_t *event) {
                const quint8 type = eventType(event);
                if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
                    return;
                const auto &key = eventCast<xcb_key_press_event_t>(event);
                if (key.event == id_)
                    keys_.push_back({type == XCB_KEY_PRESS, key.detail, key.state});
            });
    connection_.serverTime();
}

TestWindow::~TestWindow() {
    xcb_destroy_window(connection_.xcb(), id_);
    xcb_flush(connection_.xcb());
}

void TestWindow::setClass(const QByteArray &names) {
    xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, id_, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, static_cast<quint32>(names.size()), names.constData());
    connection_.serverTime();
}

void TestWindow::map() {
    xcb_map_window(connection_.xcb(), id_);
    xcb_flush(connection_.xcb());
}

void TestWindow::setFocus() {
    xcb_set_input_focus(connection_.xcb(), XCB_INPUT_FOCUS_PARENT, id_, XCB_CURRENT_TIME);
    xcb_flush(connection_.xcb());
}

bool TestWindow::isViewable() const {
    const auto reply = replyTo(connection_.xcb(), xcb_get_window_attributes_reply,
                               xcb_get_window_attributes(connection_.xcb(), id_));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool TestWindow::hasFocus() const {
    const auto reply = replyTo(connection_.xcb(), xcb_get_input_focus_reply,
                               xcb_get_input_focus(connection_.xcb()));
    return reply && reply->focus == id_;
}

} // namespace quillmender::x11
