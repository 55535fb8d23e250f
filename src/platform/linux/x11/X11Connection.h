#pragma once

#include "platform/linux/x11/Xcb.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>
#include <xcb/xcb.h>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace quillmender::x11 {

/// The program's own connection to the X server, beside the toolkit's: its events are dispatched by
/// the event loop of the thread that made it. Replies of the server are waited for, replies of
/// other clients never are. Its child objects end before it does.
class X11Connection : public QObject {
    Q_OBJECT

  public:
    /// Null when there is no server, or it lacks XFixes. An empty name is the session's display.
    static std::unique_ptr<X11Connection> open(const QByteArray &displayName = {});

    /// The same of the session's display, whose server may take its time to start. Waits for
    /// `limit` at most.
    static std::unique_ptr<X11Connection> openWithin(std::chrono::milliseconds limit);

    ~X11Connection() override;

    xcb_connection_t *xcb() const { return xcb_; }
    xcb_window_t root() const { return screen_->root; }

    /// A window that is never mapped, which owns selections.
    xcb_window_t window() const { return window_; }

    xcb_atom_t atom(const QByteArray &name);

    /// In the order of the atoms; empty for what is no atom at all.
    QList<QByteArray> atomNames(const QList<xcb_atom_t> &atoms);

    /// The server's present time, never `XCB_CURRENT_TIME`. One round trip.
    xcb_timestamp_t serverTime();

    /// How much data fits into one request.
    qsizetype maximumDataBytes() const;

    /// Whether such an event has arrived that nobody was told of yet.
    bool isPending(const std::function<bool(const xcb_generic_event_t *)> &isMeant);

    /// How many watches each foreign window has; for WindowWatch alone.
    QHash<xcb_window_t, int> &watchCounts() { return watchCounts_; }

    bool hasTest() const { return hasTest_; }
    bool hasResource() const { return hasResource_; }
    quint8 fixesFirstEvent() const { return fixesFirstEvent_; }
    bool isLost() const { return notifier_ == nullptr; }

  Q_SIGNALS:
    void eventReceived(const xcb_generic_event_t *event);
    /// The server went away; nothing works any more.
    void lost();

  private:
    static std::unique_ptr<X11Connection> make(xcb_connection_t *xcb, int screenIndex);
    X11Connection(xcb_connection_t *xcb, xcb_screen_t *screen);

    bool initialize();
    void prepareToSleep();
    void dispatchPending();
    void readEvents();
    void closeDown();

    xcb_connection_t *xcb_;
    xcb_screen_t *screen_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    std::unique_ptr<QSocketNotifier> notifier_;
    /// For the events that a turn of the event loop has no time for.
    QTimer continuation_;
    std::deque<XcbPointer<xcb_generic_event_t>> pending_;
    QHash<QByteArray, xcb_atom_t> atoms_;
    QHash<xcb_atom_t, QByteArray> atomNames_;
    QHash<xcb_window_t, int> watchCounts_;
    xcb_atom_t timestampAtom_ = XCB_ATOM_NONE;
    quint8 fixesFirstEvent_ = 0;
    bool hasTest_ = false;
    bool hasResource_ = false;
};

/// The bits of an event's type that say what it is, without the flag of a sent event.
inline quint8 eventType(const xcb_generic_event_t *event) {
    return event->response_type & 0x7f;
}

} // namespace quillmender::x11
