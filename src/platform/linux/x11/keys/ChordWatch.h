#pragma once

#include "platform/Chords.h"
#include "platform/linux/x11/windows/WindowWatch.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace quillmender::x11 {

class WindowPing;

/// Follows the application that was typed the latest chord for as long as the chord may still be
/// ahead of it: until it has answered two questions, since a toolkit may answer one before it
/// handles the keys that came with it; until it is gone; or for a minute.
class ChordWatch : public QObject {
    Q_OBJECT

  public:
    ChordWatch(X11Connection &connection, WindowPing &ping);

    /// Right after the chord. An application that answers no questions at all is not followed.
    void start(xcb_window_t window, Chord chord);

    /// Which window may have this chord ahead of it; `XCB_WINDOW_NONE` when none has.
    xcb_window_t pending(Chord chord) const {
        return chord == chord_ ? window_ : xcb_window_t{XCB_WINDOW_NONE};
    }

  Q_SIGNALS:
    /// The chord has been handled, or never will be.
    void settled();

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void handleAnswer(xcb_window_t window);
    void settle();

    X11Connection &connection_;
    WindowPing &ping_;
    std::unique_ptr<WindowWatch> watch_;
    QTimer patience_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    Chord chord_ = Chord::copy;
    int answers_ = 0;
};

} // namespace quillmender::x11
