#pragma once

#include "platform/LentText.h"
#include "platform/linux/PasteReading.h"
#include "platform/linux/PasteText.h"
#include "platform/linux/wayland/ChordMoment.h"
#include "platform/linux/wayland/clipboard/DataSource.h"
#include "platform/linux/wayland/clipboard/TerminalLoan.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>

#include <chrono>

namespace quillmender::wayland {

/// A text on the clipboard for one paste. A compositor does not say who asks for it. What is
/// believed is therefore: who asks for a plain text once the chord is out is pasting it. Programs
/// that record the clipboard ask as soon as the text is there, which is before the chord; those of
/// them that heed the mark ask for nothing else. It ends when the pasteboard is replaced, goes
/// away, or somebody else takes the clipboard over: nobody can ask for it any more then.
class WaylandLentText : public QObject,
                        public LentText,
                        public PasteText,
                        public std::enable_shared_from_this<WaylandLentText> {
    Q_OBJECT

  public:
    /// `source` offers the text already. All but that outlive it.
    WaylandLentText(DataControl &control, DataSource &source, PrimaryLoan &primary,
                    const ChordMoment &chords);

    /// Whether a text that was asked for after the chord has been handed over; true too when that
    /// is still under way at the limit. When nobody has asked by then, nobody is given it later.
    QCoro::Task<bool> wasRead(std::chrono::milliseconds limit) override;

    bool isOffered() const override { return source_ != nullptr; }
    QCoro::Task<Obstacle> lendToTerminal(TakesLineEnds takesLineEnds) override;
    bool isLentToTerminal() const override { return terminal_.isLent(); }

    /// Called by the pasteboard, which has other contents from now on.
    void end();

  Q_SIGNALS:
    /// It has been read since the chord, or has ended.
    void changed();

  private:
    void handleAsked(const QByteArray &type, PipeWriter *transfer);
    QCoro::Task<> readingIsOver(QDeadlineTimer deadline);

    void refuse();

    QPointer<DataSource> source_;
    QPointer<DataSource> primarySource_; ///< while it is lent to a terminal
    TerminalLoan terminal_;
    int chords_ = 0;   ///< since it was lent
    int underWay_ = 0; ///< transfers that were asked for since the last chord
    PasteReading reading_;
};

} // namespace quillmender::wayland
