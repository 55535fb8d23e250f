#pragma once

#include "platform/linux/x11/X11Property.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace quillmender::x11 {

class X11Connection;

/// One request to a selection's owner for one target, from asking to the last byte, incremental
/// transfer included. It has a window of its own: owners that tell their requestors apart by
/// window alone can serve many at once, and a late answer meets nothing but this object.
class SelectionConversion : public QObject {
    Q_OBJECT

  public:
    /// More than `most` bytes are refused. `parameter`, where given, is what the property holds
    /// when the owner is asked.
    SelectionConversion(X11Connection &connection, xcb_atom_t selection, xcb_atom_t target,
                        xcb_timestamp_t time, qsizetype most, const QList<quint32> &parameter = {});
    ~SelectionConversion() override;

    xcb_atom_t target() const { return target_; }
    bool isFinished() const { return isDropped_ || isAnswered(); }

    /// Whether the owner has nothing more to send.
    bool isAnswered() const { return state_ == State::done || state_ == State::refused; }

    /// Whether the owner answered with the target's data, all of it.
    bool isDone() const { return state_ == State::done && !isDropped_; }
    const X11Property &result() const { return result_; }

    /// Bytes that are held.
    qsizetype received() const { return result_.value.size(); }

    /// Holds nothing of it any more. What the owner still sends is taken from it unread.
    void drop();

    /// Leaves a request that its owner may still answer to itself: an owner must not find the
    /// window gone, which can end a program that does not expect it.
    static void abandon(std::unique_ptr<SelectionConversion> conversion);

  Q_SIGNALS:
    /// More data, or the end.
    void advanced();

  private:
    enum class State { waiting, reading, incremental, readingChunk, done, refused };

    void handleEvent(const xcb_generic_event_t *event);
    void beginReading(State state);
    void readOn();
    void receive(const X11PropertyPiece &piece);
    bool fits(const X11PropertyPiece &piece) const;
    void discard();
    void advance(State state);

    X11Connection &connection_;
    xcb_atom_t selection_;
    xcb_atom_t target_;
    qsizetype most_;
    xcb_atom_t property_;
    xcb_window_t window_;
    State state_ = State::waiting;
    bool isDropped_ = false;
    /// Of what was dropped.
    qsizetype discarded_ = 0;
    X11Property result_;
    /// Of the property that is being read.
    qsizetype offset_ = 0;
    QTimer nextPiece_;
};

} // namespace quillmender::x11
