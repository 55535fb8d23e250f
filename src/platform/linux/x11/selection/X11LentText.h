#pragma once

#include "platform/LentText.h"
#include "platform/linux/x11/selection/PasteReaders.h"
#include "platform/linux/x11/selection/TerminalLoan.h"

#include <QDeadlineTimer>
#include <QObject>

namespace quillmender::x11 {

struct OwnSelections;

/// A text on CLIPBOARD for one paste. It ends when the pasteboard is replaced or goes away: from
/// then on it touches no selection, and who waits for its reader goes on.
class X11LentText : public QObject,
                    public LentText,
                    public std::enable_shared_from_this<X11LentText> {
    Q_OBJECT

  public:
    /// The text is on CLIPBOARD already, for who acts for the window `reader`.
    X11LentText(OwnSelections &selections, xcb_window_t reader);

    QCoro::Task<bool> wasRead(std::chrono::milliseconds limit) override;

    /// Whether it still is what this program has put on the pasteboard.
    bool isOffered() const { return selections_ != nullptr; }

    /// Makes it one for a terminal; see TerminalLoan.
    QCoro::Task<Obstacle> lendToTerminal(TerminalLoan::TakesLineEnds takesLineEnds);
    bool isLentToTerminal() const { return terminal_.isLent(); }

    /// The chord that pastes it is out, into this window: who reads from now on is pasting.
    void typeChord(xcb_window_t window) { readers_.typeChord(window); }

    /// Called by the pasteboard, which has other contents from now on.
    void end();

  Q_SIGNALS:
    /// The application has read it since the chord, or it has ended.
    void changed();

  private:
    void handleServed(xcb_window_t requestor, SelectionOwner::Moment askedAt);
    QCoro::Task<> readingIsOver(QDeadlineTimer deadline);
    bool refuseLateReader();

    OwnSelections *selections_;
    PasteReaders readers_;
    TerminalLoan terminal_;
    bool wasReadEarly_ = false; ///< as of the end
};

} // namespace quillmender::x11
