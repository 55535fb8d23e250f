#pragma once

#include "platform/LentText.h"
#include "platform/linux/PasteText.h"
#include "platform/linux/x11/selection/PasteReaders.h"
#include "platform/linux/x11/selection/TerminalLoan.h"

#include <QDeadlineTimer>
#include <QObject>

namespace quillmender::x11 {

struct OwnSelections;

/// A text on CLIPBOARD for one paste. It ends when the pasteboard is replaced or goes away: from
/// then on it touches no selection, and who waits for its reader goes on.
///
/// Within the reach of a session its readers are the compositor, for whomever. Who asks once the
/// chord is out is pasting it, but for the compositor's own first reading of what is new there;
/// when nobody has asked by the end, nobody is given it later.
class X11LentText : public QObject,
                    public LentText,
                    public PasteText,
                    public std::enable_shared_from_this<X11LentText> {
    Q_OBJECT

  public:
    /// The text is on CLIPBOARD already, for who acts for the window `reader`.
    X11LentText(OwnSelections &selections, xcb_window_t reader);

    QCoro::Task<bool> wasRead(std::chrono::milliseconds limit) override;

    bool isOffered() const override { return selections_ != nullptr; }
    QCoro::Task<Obstacle> lendToTerminal(TakesLineEnds takesLineEnds) override;
    bool isLentToTerminal() const override { return terminal_.isLent(); }

    /// The chord that pastes it is out, into this window: who reads from now on is pasting.
    void typeChord(xcb_window_t window) { readers_.typeChord(window); }
    void noteChord() override { readers_.typeChordForAnybody(); }

    /// Called by the pasteboard, which has other contents from now on.
    void end();

  Q_SIGNALS:
    /// The application has read it since the chord, or it has ended.
    void changed();

  private:
    void handleServed(xcb_window_t requestor, SelectionOwner::Moment askedAt);
    void handleClipboardServed(xcb_window_t requestor, SelectionOwner::Moment askedAt);
    QCoro::Task<> readingIsOver(QDeadlineTimer deadline);
    bool refuseLateReader();
    void refuseEverybody();

    OwnSelections *selections_;
    PasteReaders readers_;
    TerminalLoan terminal_;
    bool isKept_;               ///< the compositor has read what is new on CLIPBOARD
    bool wasReadEarly_ = false; ///< as of the end
};

} // namespace quillmender::x11
