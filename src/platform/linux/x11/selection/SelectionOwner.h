#pragma once

#include "platform/linux/x11/selection/SelectionContents.h"
#include "platform/linux/x11/selection/SelectionReach.h"

#include <QHash>
#include <QObject>

#include <chrono>
#include <utility>

namespace quillmender::x11 {

class IncrSender;
class X11Connection;

/// Offers contents as one selection to every other client, byte for byte with their property types
/// and formats, by the rules of the ICCCM: TARGETS, TIMESTAMP, MULTIPLE, and incremental transfers
/// of what does not fit into a request. Within the reach of a session the first three are answered
/// and not listed, and so are the names that a compositor adds to a text of its own clients.
class SelectionOwner : public QObject {
    Q_OBJECT

  public:
    using Moment = std::chrono::steady_clock::time_point;

    SelectionOwner(X11Connection &connection, xcb_atom_t selection,
                   SelectionReach reach = SelectionReach::server);

    /// Takes the selection, or gives it new contents, as of now. Only who acts for the window
    /// `reader` is told what they are, everybody where that is `XCB_WINDOW_NONE`; others find the
    /// mark for clipboard managers in them, and nothing besides. False when the server refused.
    bool own(SelectionContents contents, xcb_window_t reader = XCB_WINDOW_NONE);

    /// Other contents for who asks from now on; nobody is told of the change.
    void exchange(SelectionContents contents);

    /// Leaves the selection without owner, whoever has it. Answers the time of that change.
    xcb_timestamp_t release();

    /// From now on answers nothing to the application of this window; `XCB_WINDOW_NONE` for none.
    void refuse(xcb_window_t window) { refused_ = window; }

    /// As far as it was told.
    bool isOwner() const { return isOwner_; }

    /// The server's word: another client may have taken the selection just now.
    bool isStillOwner() const;

    const SelectionContents &contents() const { return contents_; }

  Q_SIGNALS:
    /// Somebody has asked and is about to be answered.
    void asked();

    /// A data target that was asked for then has been handed over completely.
    void served(xcb_window_t requestor, Moment askedAt);

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void handleClear(const xcb_selection_clear_event_t &clear);
    void handleRequest(const xcb_selection_request_event_t &request);
    bool isRefused(xcb_window_t requestor) const;
    bool isOnlooker(xcb_window_t requestor) const;
    bool answer(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool answerMultiple(xcb_window_t requestor, xcb_atom_t property);
    bool isShown(xcb_atom_t target);
    bool isCompositorsName(xcb_atom_t target);
    void answerTargets(xcb_window_t requestor, xcb_atom_t property);
    bool hand(xcb_window_t requestor, xcb_atom_t property, const X11Property &contents);
    bool handIncrementally(xcb_window_t requestor, xcb_atom_t property,
                           const X11Property &contents);

    X11Connection &connection_;
    xcb_atom_t selection_;
    SelectionReach reach_;
    SelectionContents contents_;
    xcb_window_t reader_ = XCB_WINDOW_NONE;
    xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
    xcb_window_t refused_ = XCB_WINDOW_NONE;
    bool isOwner_ = false;
    bool hasHandedData_ = false;
    Moment askedAt_; ///< the present request
    /// In answer to the present request.
    qsizetype handedBytes_ = 0;
    QHash<std::pair<xcb_window_t, xcb_atom_t>, IncrSender *> transfers_;
    bool isForOnlooker_ = false;
};

} // namespace quillmender::x11
