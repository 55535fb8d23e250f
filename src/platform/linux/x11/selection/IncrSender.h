#pragma once

#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/WindowWatch.h"

#include <QObject>
#include <QTimer>

#include <chrono>

namespace quillmender::x11 {

class X11Connection;

/// Hands one value that is too large for a request to one requestor, a chunk each time that it has
/// taken the last one away. It needs nothing of the selection: it goes on after that was lost.
class IncrSender : public QObject {
    Q_OBJECT

  public:
    /// Writes the announcement; the caller then notifies the requestor, which has as long as
    /// `patience` to take each chunk.
    IncrSender(X11Connection &connection, xcb_window_t requestor, xcb_atom_t property,
               X11Property contents, std::chrono::milliseconds patience = std::chrono::seconds(10));

  Q_SIGNALS:
    /// Once. Not complete when the requestor died or stopped taking chunks.
    void finished(bool isComplete);

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void sendChunk();
    void finish(bool isComplete);

    X11Connection &connection_;
    WindowWatch watch_;
    xcb_window_t requestor_;
    xcb_atom_t property_;
    X11Property contents_;
    qsizetype sent_ = 0;
    QTimer patience_;
};

} // namespace quillmender::x11
