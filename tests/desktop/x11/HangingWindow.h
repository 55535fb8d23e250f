#pragma once

#include "desktop/x11/TestWindow.h"

namespace quillmender::x11 {

/// The window of an application that says whether it attends to its events, when the test lets it.
class HangingWindow : public TestWindow {
  public:
    explicit HangingWindow(X11Connection &connection);

    /// Answers what was asked so far, or from now on answers at once.
    void answerOnce();
    void attend();
    void hang() { isAttentive_ = false; }

    qsizetype unanswered() const { return questions_.size(); }

  private:
    void handleEvent(const xcb_generic_event_t *event);

    X11Connection &peer_;
    QList<xcb_client_message_event_t> questions_;
    bool isAttentive_ = true;
};

} // namespace quillmender::x11
