#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/x11/PasteRecord.h"
#include "platform/linux/x11/PrimaryLoan.h"
#include "platform/linux/x11/SelectionOwner.h"
#include "platform/linux/x11/TransferBudget.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <functional>

namespace quillmender {

class ChordWatch;

/// The CLIPBOARD selection as a pasteboard of at most one item, whose types are target names. A
/// clear and the write that follows it in the same turn of the event loop are one change of owner;
/// a clear alone leaves the clipboard without owner. What is written back while its owner is still
/// there, as it was read, stays with that owner, who has more of it than can be read. An
/// application that comes round to a chord only after the contents were put back changes nothing
/// of them any more, and pastes nothing of them.
class X11Pasteboard : public QObject, public Pasteboard {
    Q_OBJECT

  public:
    X11Pasteboard(X11Connection &connection, const PasteRecord &pastes, const ChordWatch &chords);

    QCoro::Task<QList<PasteboardItem>> items() override;
    QCoro::Task<std::optional<QList<PasteboardItem>>>
    itemsWithin(std::chrono::milliseconds limit) override;
    qint64 changeCount() override { return changeCount_; }
    void clearContents() override;
    bool writeItems(const QList<PasteboardItem> &items) override;
    QCoro::Task<std::optional<QString>> string() override;
    bool setString(const QString &text) override;
    QCoro::Task<bool> stringWasRead(std::chrono::milliseconds limit) override;

    /// Whether line ends and tabs are text to the program that is pasted into now.
    using TakesLineEnds = std::function<bool()>;

    /// Makes the text of `setString` one for a terminal (TerminalText) and offers it as PRIMARY
    /// too, which terminals paste, until the pasteboard is written again. False when there is
    /// nothing to paste, or several lines and the program does not take them; it is asked again
    /// whenever the terminal asks for the text, which from the first no on has a single line and
    /// no tabs.
    QCoro::Task<bool> lendToTerminal(TakesLineEnds takesLineEnds);

    /// Whether what a terminal would paste now is what was lent to it.
    bool isLent() const { return owner_.isStillOwner() && primary_.owner().isStillOwner(); }

    /// At the end of the program: gives the user's contents to the clipboard manager, if there is
    /// one. Completes after two seconds at most.
    QCoro::Task<> handOver() override;

  Q_SIGNALS:
    void pasteServed();

  private:
    struct Reading {
        QList<PasteboardItem> items;
        bool isCutShort = false;
    };

    QCoro::Task<Reading> read(TransferBudget budget);
    bool isLastReadLarge() const;
    bool isUnchangedSinceRead() const;
    void forgetRead();
    void handleEvent(const xcb_generic_event_t *event);
    bool isForeignChange(const xcb_generic_event_t *event) const;
    void handleServed(xcb_window_t requestor, quint64 paste);
    void keepToOneLine();
    void finishClear();
    bool write(SelectionContents contents, SelectionOwner::Audience audience);
    void rememberRead(const QList<PasteboardItem> &items);
    bool isRead() const;
    QCoro::Task<> readingIsOver(QDeadlineTimer deadline);
    bool isStillAsRead(const QList<PasteboardItem> &items) const;
    void refuse(xcb_window_t window);
    void expectLateCopy(const QList<PasteboardItem> &items);
    void handleLateCopy(xcb_window_t owner);

    X11Connection &connection_;
    const PasteRecord &pastes_;
    const ChordWatch &chords_;
    SelectionOwner owner_;
    PrimaryLoan primary_;
    TakesLineEnds takesLineEnds_;
    SelectionContents oneLine_;
    qint64 changeCount_ = 0;
    bool isCleared_ = false;
    bool isTemporary_ = false;
    std::optional<QList<PasteboardItem>> lastRead_;
    std::optional<QList<PasteboardItem>> untilLateCopy_;
    QTimer forgetRead_;
    QTimer stopRefusing_;
    xcb_timestamp_t releasedAt_ = XCB_CURRENT_TIME;
    quint64 pastesBefore_ = 0;
    quint64 servedPaste_ = 0;
    QElapsedTimer sinceServed_;
    /// Of what is on the pasteboard since `setString`, before the chord.
    QSet<xcb_window_t> earlyReaders_;
};

} // namespace quillmender
