#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/LastReading.h"
#include "platform/linux/TransferBudget.h"
#include "platform/linux/wayland/ChordMoment.h"
#include "platform/linux/wayland/clipboard/LateCopy.h"
#include "platform/linux/wayland/clipboard/PrimaryLoan.h"
#include "platform/linux/wayland/clipboard/SelectionOwner.h"

#include <QObject>

#include <optional>

namespace quillmender::wayland {

class WaylandLentText;

/// The compositor's clipboard as a pasteboard of at most one item, whose types are MIME types. What
/// is written back while its owner is still there, as it was read, stays with that owner, who has
/// more of it than can be read. An application that comes round to a copy chord only after the
/// contents were put back changes nothing of them for good.
class WaylandPasteboard : public QObject, public Pasteboard {
    Q_OBJECT

  public:
    /// All outlive it.
    WaylandPasteboard(DataControl &control, const ChordMoment &chords, const CopyWatch &copies);
    ~WaylandPasteboard() override;

    QCoro::Task<QList<PasteboardItem>> items() override;
    QCoro::Task<std::optional<QList<PasteboardItem>>>
    itemsWithin(std::chrono::milliseconds limit) override;
    qint64 changeCount() override { return changes_; }
    void replaceContents(const QList<PasteboardItem> &items) override;
    QCoro::Task<std::optional<QString>> string() override;

    /// Always a WaylandLentText. Whoever asks is given it: the reader cannot be told from others.
    LentTextRef lend(const QString &text, RunningApplicationRef reader) override;

    /// At the end of the program: leaves a small process behind that goes on serving the user's
    /// contents. Completes after two seconds at most.
    QCoro::Task<> handOver() override;

  private:
    struct Reading {
        QList<PasteboardItem> items;
        bool isCutShort = false;
    };

    QCoro::Task<Reading> read(TransferBudget budget);
    void handleChangeByOthers();
    void leaveToOwner(const QList<PasteboardItem> &items);
    void endLoan();

    DataControl &control_;
    const ChordMoment &chords_;
    SelectionOwner owner_;
    PrimaryLoan primary_;
    LastReading lastReading_;
    LateCopy lateCopy_;
    qint64 changes_ = 0;
    /// What was left to its owner just now, until the compositor is heard to have known of no
    /// other.
    std::optional<QList<PasteboardItem>> left_;
    quint64 leavings_ = 0;
    std::shared_ptr<WaylandLentText> lent_; ///< what is there, while it is a lent text
};

} // namespace quillmender::wayland
