#include "platform/linux/x11/keys/ChordWatch.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/windows/WindowPing.h"

namespace quillmender::x11 {

using namespace std::chrono_literals;

ChordWatch::ChordWatch(X11Connection &connection, WindowPing &ping)
    : connection_(connection),
      ping_(ping) {
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, &ChordWatch::settle);
    connect(&ping_, &WindowPing::answered, this, &ChordWatch::handleAnswer);
    connect(&connection_, &X11Connection::eventReceived, this, &ChordWatch::handleEvent);
}

void ChordWatch::start(xcb_window_t window, Chord chord) {
    settle();
    window_ = window;
    chord_ = chord;
    answers_ = 0;
    watch_ = std::make_unique<WindowWatch>(connection_, window);
    patience_.start(1min);
    if (!ping_.send(window))
        settle();
}

void ChordWatch::handleAnswer(xcb_window_t window) {
    constexpr int wanted = 2;
    if (window != window_)
        return;
    if (++answers_ == wanted || !ping_.send(window))
        settle();
}

void ChordWatch::handleEvent(const xcb_generic_event_t *event) {
    if (window_ != XCB_WINDOW_NONE && eventType(event) == XCB_DESTROY_NOTIFY &&
        eventCast<xcb_destroy_notify_event_t>(event).window == window_)
        settle();
}

void ChordWatch::settle() {
    if (window_ == XCB_WINDOW_NONE)
        return;
    window_ = XCB_WINDOW_NONE;
    patience_.stop();
    watch_.reset();
    Q_EMIT settled();
}

} // namespace quillmender::x11
