#pragma once

#include "platform/linux/Obstacle.h"
#include "platform/linux/PasteText.h"
#include "platform/linux/x11/selection/SelectionContents.h"

#include <QCoroTask>
#include <QObject>

#include <functional>

namespace quillmender::x11 {

struct OwnSelections;

/// A lent text in its form for a terminal (TerminalText), as CLIPBOARD and as PRIMARY, which
/// terminals paste.
class TerminalLoan : public QObject {
    Q_OBJECT

  public:
    using TakesLineEnds = PasteText::TakesLineEnds;

    TerminalLoan(OwnSelections &selections, xcb_window_t reader);

    /// An obstacle is a text with nothing in it to paste, or with several lines where the program
    /// does not take them; it is asked again whenever somebody asks for the text, which from the
    /// first no on has a single line and no tabs.
    QCoro::Task<Obstacle> lend(TakesLineEnds takesLineEnds);

    /// Whether what a terminal would paste now is what was lent to it.
    bool isLent() const;

    /// The pasteboard is replaced, or goes away: nothing of it is touched any more.
    void end();

  private:
    void keepToOneLine();

    OwnSelections *selections_;
    xcb_window_t reader_;
    TakesLineEnds takesLineEnds_;
    SelectionContents oneLine_;
};

} // namespace quillmender::x11
