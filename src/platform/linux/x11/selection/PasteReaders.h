#pragma once

#include "platform/linux/PasteReading.h"
#include "platform/linux/x11/selection/SelectionOwner.h"

#include <QSet>
#include <xcb/xcb.h>

#include <optional>

namespace quillmender::x11 {

class X11Connection;

/// Who has read one lent text, before and after the chord that pastes it. Clipboard managers read
/// too; what counts is who acts for the window that the chord went to.
class PasteReaders {
  public:
    using Moment = SelectionOwner::Moment;

    explicit PasteReaders(X11Connection &connection) : connection_(connection) {}

    void typeChord(xcb_window_t window);

    /// The same where nobody knows into which window: whoever reads from now on is pasting.
    void typeChordForAnybody();

    /// True when that was the application reading what it was told to paste.
    bool add(xcb_window_t requestor, Moment askedAt);

    /// Where the chord went; `XCB_WINDOW_NONE` before it is out, and where nobody knows.
    xcb_window_t window() const { return window_; }

    /// What the application has read since the chord.
    const PasteReading &reading() const { return reading_; }

    /// Whether the application had read it already when the chord came.
    bool isReadEarly() const;

  private:
    X11Connection &connection_;
    const Moment lentAt_ = std::chrono::steady_clock::now();
    std::optional<Moment> typedAt_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    QSet<xcb_window_t> early_;
    PasteReading reading_;
};

} // namespace quillmender::x11
