#pragma once

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <xcb/xcb.h>

#include <chrono>

namespace quillmender::x11 {

class X11Connection;

/// Asks applications whether they attend to their events (`_NET_WM_PING`). An application that
/// answers has read what was sent to it before, keys included.
class WindowPing : public QObject {
    Q_OBJECT

  public:
    explicit WindowPing(X11Connection &connection);

    /// Asks. False when the window is gone or takes no part in this protocol, so that no answer is
    /// to be expected.
    bool send(xcb_window_t window);

    /// Whether the latest question to this window, of the last minute, is still without answer.
    bool isAwaited(xcb_window_t window) const;

    /// Asks and waits. False only when an answer is to be expected and did not come in time.
    QCoro::Task<bool> waitForAttention(xcb_window_t window, std::chrono::milliseconds limit);

  Q_SIGNALS:
    void answered(xcb_window_t window);

  private:
    struct Question {
        xcb_window_t window;
        xcb_timestamp_t time;
        bool operator==(const Question &) const = default;
    };

    void handleEvent(const xcb_generic_event_t *event);
    bool takesPart(xcb_window_t window);
    bool forget(const Question &question);
    void listen();

    X11Connection &connection_;
    QList<Question> questions_;
};

} // namespace quillmender::x11
