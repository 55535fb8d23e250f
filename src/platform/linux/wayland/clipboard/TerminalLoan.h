#pragma once

#include "platform/linux/PasteText.h"
#include "platform/linux/wayland/clipboard/DataSource.h"

#include <QObject>
#include <QPointer>

namespace quillmender::wayland {

class PrimaryLoan;

/// A lent text in its form for a terminal (TerminalText), as clipboard and as PRIMARY, which
/// terminals paste.
class TerminalLoan : public QObject {
    Q_OBJECT

  public:
    /// The text is offered as the clipboard already. All outlive it.
    TerminalLoan(DataControl &control, DataSource &clipboard, PrimaryLoan &primary);

    /// An obstacle is a text with nothing in it to paste, or with several lines where the program
    /// does not take them; it is asked again whenever somebody asks for the text, which from the
    /// first no on has a single line and no tabs.
    QCoro::Task<Obstacle> lend(PasteText::TakesLineEnds takesLineEnds);

    /// Whether what a terminal would paste now is what was lent to it.
    bool isLent() const;

    /// The pasteboard is replaced, or goes away: nothing of it is touched any more.
    void end();

  Q_SIGNALS:
    /// The text is offered as PRIMARY too, by that source.
    void lentAsPrimary(DataSource *source);

  private:
    void keepToOneLine();

    DataControl &control_;
    PrimaryLoan &primary_;
    QPointer<DataSource> clipboardSource_; ///< null when the loan has ended
    QPointer<DataSource> primarySource_;
    PasteText::TakesLineEnds takesLineEnds_;
    OfferedContents oneLine_;
};

} // namespace quillmender::wayland
