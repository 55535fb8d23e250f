#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"

#include <QObject>

#include <optional>

namespace quillmender::x11 {

/// All of a property, which is removed.
std::optional<X11Property> takeProperty(const X11Connection &connection, xcb_window_t window,
                                        xcb_atom_t property);

/// A window that asks a selection's owner for one thing at a time, as another application does.
class TestRequestor : public QObject {
  public:
    explicit TestRequestor(X11Connection &connection, const char *selection = "CLIPBOARD");
    ~TestRequestor() override;

    xcb_window_t window() const { return window_; }

    void ask(const char *target);
    void askMultiple(const QList<QByteArray> &targets);
    bool isAnswered() const { return isAnswered_; }

    /// The answer to the last question; absent when it was refused.
    const std::optional<X11Property> &answer() const { return answer_; }

    /// Asks and runs the event loop until the answer is complete.
    std::optional<X11Property> fetch(const char *target);
    QList<QByteArray> fetchTargets();

    /// Leaves an incremental transfer lying once so many chunks have been taken.
    int mostChunks = -1;
    int chunks = 0;
    /// Goes on with it.
    void resume();

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void takeChunk();

    X11Connection &connection_;
    xcb_atom_t selection_;
    xcb_atom_t property_;
    xcb_window_t window_;
    bool isAnswered_ = false;
    bool isIncremental_ = false;
    std::optional<X11Property> answer_;
};

} // namespace quillmender::x11
