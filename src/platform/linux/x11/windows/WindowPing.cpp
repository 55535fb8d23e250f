#include "platform/linux/x11/windows/WindowPing.h"

#include "platform/SignalWait.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

namespace quillmender::x11 {

using namespace std::chrono_literals;

WindowPing::WindowPing(X11Connection &connection) : connection_(connection) {
    connect(&connection_, &X11Connection::eventReceived, this, &WindowPing::handleEvent);
}

bool WindowPing::takesPart(xcb_window_t window) {
    const auto protocols = readProperty(connection_, window, connection_.atom("WM_PROTOCOLS"));
    return protocols && protocols->cardinals().contains(connection_.atom("_NET_WM_PING"));
}

bool WindowPing::send(xcb_window_t window) {
    questions_.removeIf([window](const Question &each) { return each.window == window; });
    listen();
    if (!takesPart(window))
        return false;
    const xcb_timestamp_t time = connection_.serverTime();
    questions_.append({window, time});
    listen();
    QTimer::singleShot(1min, this, [this, window, time] { forget({window, time}); });
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection_.atom("WM_PROTOCOLS");
    const std::array<quint32, 5> data{connection_.atom("_NET_WM_PING"), time, window, 0, 0};
    std::ranges::copy(data, message.data.data32);
    std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &message, sizeof message);
    xcb_send_event(connection_.xcb(), 0, window, XCB_EVENT_MASK_NO_EVENT, bytes.data());
    xcb_flush(connection_.xcb());
    return true;
}

bool WindowPing::isAwaited(xcb_window_t window) const {
    return std::ranges::find(questions_, window, &Question::window) != questions_.end();
}

QCoro::Task<bool> WindowPing::waitForAttention(xcb_window_t window,
                                               std::chrono::milliseconds limit) {
    if (!send(window))
        co_return true;
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    while (isAwaited(window)) {
        const auto left = deadline.remainingTimeAsDuration();
        if (left <= std::chrono::nanoseconds(0))
            co_return false;
        co_await SignalWait(this, &WindowPing::answered,
                            std::chrono::ceil<std::chrono::milliseconds>(left));
    }
    co_return true;
}

void WindowPing::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) != XCB_CLIENT_MESSAGE)
        return;
    const auto &message = eventCast<xcb_client_message_event_t>(event);
    const std::span data(message.data.data32);
    if (message.type != connection_.atom("WM_PROTOCOLS") || message.window != connection_.root() ||
        message.format != 32 || data[0] != connection_.atom("_NET_WM_PING"))
        return;
    if (forget({data[2], data[1]}))
        Q_EMIT answered(data[2]);
}

bool WindowPing::forget(const Question &question) {
    const bool isKnown = questions_.removeOne(question);
    if (isKnown)
        listen();
    return isKnown;
}

void WindowPing::listen() {
    // Answers go to the root, with every change of every window on the screen: those would wake
    // this program, so they are listened to only while an answer is due. Most toolkits answer to
    // who follows the root's children, Qt to who follows the root itself.
    constexpr quint32 always = XCB_EVENT_MASK_PROPERTY_CHANGE;
    constexpr quint32 answers =
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const quint32 events = questions_.isEmpty() ? always : always | answers;
    xcb_change_window_attributes(connection_.xcb(), connection_.root(), XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_.xcb());
}

} // namespace quillmender::x11
