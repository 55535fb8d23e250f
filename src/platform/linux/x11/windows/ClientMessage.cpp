#include "platform/linux/x11/windows/ClientMessage.h"

#include "platform/linux/x11/X11Connection.h"

#include <algorithm>

namespace quillmender::x11 {

void sendToWindowManager(X11Connection &connection, xcb_window_t window, const QByteArray &message,
                         const std::array<quint32, 5> &data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = connection.atom(message);
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(connection.xcb(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
}

} // namespace quillmender::x11
