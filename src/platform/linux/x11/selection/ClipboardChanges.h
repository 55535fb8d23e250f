#pragma once

#include <QObject>
#include <xcb/xcb.h>

namespace quillmender::x11 {

class X11Connection;

/// Counts how often the contents of the CLIPBOARD selection were replaced, by whomever.
class ClipboardChanges : public QObject {
    Q_OBJECT

  public:
    explicit ClipboardChanges(X11Connection &connection);

    qint64 count() const { return count_; }

    /// To be told of what this program does itself, when it does it.
    void countOwn() { ++count_; }

    /// The program has left the clipboard without owner at this time.
    void countRelease(xcb_timestamp_t time);

    /// Whether the server knows of a change by others that was not counted yet. One round trip.
    bool isAnyUncounted();

  Q_SIGNALS:
    /// Another client has taken the clipboard (its window), or nobody has it any more.
    void foreignOwner(xcb_window_t owner);

  private:
    void handleEvent(const xcb_generic_event_t *event);
    bool isForeign(const xcb_generic_event_t *event) const;

    X11Connection &connection_;
    xcb_atom_t clipboard_;
    xcb_timestamp_t releasedAt_ = XCB_CURRENT_TIME;
    qint64 count_ = 0;
};

} // namespace quillmender::x11
