#pragma once

#include <QtGlobal>
#include <xcb/res.h>

namespace quillmender::x11 {

class X11Connection;

/// The process on this machine that made a window, as the server knows it (X-Resource); 0 when it
/// does not.
qint64 processOfClient(const X11Connection &connection, xcb_window_t window);

/// The process behind a window: what the server knows of its client, else what the window says of
/// itself, if it is of this machine. 0 when neither is known. What a window says comes second: a
/// program in a container or at the other end of a network says a number that is another's here.
qint64 processOfWindow(X11Connection &connection, xcb_window_t window);

/// The same question, sent with others before the answers are waited for.
class ProcessQuestion {
  public:
    ProcessQuestion(X11Connection &connection, xcb_window_t window);

    /// To be called once.
    qint64 answer() const;

  private:
    X11Connection &connection_;
    xcb_window_t window_;
    xcb_res_query_client_ids_cookie_t question_{};
};

} // namespace quillmender::x11
