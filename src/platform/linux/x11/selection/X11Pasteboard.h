#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/LastReading.h"
#include "platform/linux/TransferBudget.h"
#include "platform/linux/x11/selection/LateCopy.h"
#include "platform/linux/x11/selection/OwnSelections.h"

#include <QObject>

namespace quillmender::x11 {

class X11LentText;

/// The CLIPBOARD selection as a pasteboard of at most one item, whose types are target names. What
/// is written back while its owner is still there, as it was read, stays with that owner, who has
/// more of it than can be read. An application that comes round to a chord only after the contents
/// were put back changes nothing of them any more, and pastes nothing of them.
class X11Pasteboard : public QObject, public Pasteboard {
    Q_OBJECT

  public:
    X11Pasteboard(X11Connection &connection, const ChordWatch &watch,
                  SelectionReach reach = SelectionReach::server);
    ~X11Pasteboard() override;

    QCoro::Task<QList<PasteboardItem>> items() override;
    QCoro::Task<std::optional<QList<PasteboardItem>>>
    itemsWithin(std::chrono::milliseconds limit) override;
    qint64 changeCount() override { return selections_.changes.count(); }
    void replaceContents(const QList<PasteboardItem> &items) override;
    QCoro::Task<std::optional<QString>> string() override;
    LentTextRef lend(const QString &text, RunningApplicationRef reader) override;

    /// At the end of the program: gives the user's contents to the clipboard manager, if there is
    /// one. Completes after two seconds at most.
    QCoro::Task<> handOver() override;

  private:
    struct Reading {
        QList<PasteboardItem> items;
        bool isCutShort = false;
    };

    QCoro::Task<Reading> read(TransferBudget budget);
    void handleForeignOwner(xcb_window_t owner);
    bool isStillThere(const QList<PasteboardItem> &items);
    void endLoan();

    X11Connection &connection_;
    OwnSelections selections_;
    LastReading lastReading_;
    LateCopy lateCopy_;
    std::shared_ptr<X11LentText> lent_; ///< what is there, while it is a lent text
};

} // namespace quillmender::x11
