#include "desktop/x11/HangingWindow.h"

#include "platform/linux/x11/X11Property.h"

#include <array>
#include <cstring>

namespace quillmender::x11 {

HangingWindow::HangingWindow(X11Connection &connection)
    : TestWindow(connection),
      peer_(connection) {
    writeCardinals(peer_, id(), peer_.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM,
                   {peer_.atom("_NET_WM_PING")});
    peer_.serverTime();
    connect(&peer_, &X11Connection::eventReceived, this, &HangingWindow::handleEvent);
}

void HangingWindow::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) != XCB_CLIENT_MESSAGE)
        return;
    const auto &message = eventCast<xcb_client_message_event_t>(event);
    if (message.window != id() || message.data.data32[0] != peer_.atom("_NET_WM_PING"))
        return;
    questions_.append(message);
    if (isAttentive_)
        answerOnce();
}

void HangingWindow::attend() {
    isAttentive_ = true;
    answerOnce();
}

void HangingWindow::answerOnce() {
    while (!questions_.isEmpty()) {
        xcb_client_message_event_t answer = questions_.takeFirst();
        answer.window = peer_.root();
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &answer, sizeof answer);
        xcb_send_event(peer_.xcb(), 0, peer_.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       bytes.data());
    }
    xcb_flush(peer_.xcb());
}

} // namespace quillmender::x11
