#pragma once

#include "platform/linux/TransferBounds.h"
#include "platform/linux/TransferBudget.h"
#include "platform/linux/wayland/clipboard/DataControl.h"
#include "platform/linux/wayland/clipboard/OfferedContents.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace quillmender::wayland {

class PipeReader;

/// Types of what is offered as one selection, read all at once with one deadline for all. A pipe
/// that is closed does not say whether its owner was done or died: the end of each is believed when
/// the compositor, asked after it, still has the offer.
class OfferReading : public QObject {
    Q_OBJECT

  public:
    /// Of what the control has as this selection now, which is not empty.
    OfferReading(DataControl &control, Selection selection, const TransferBudget &budget,
                 const TransferBounds &bounds);
    ~OfferReading() override;

    /// Once; `settled` follows.
    void request(const QList<QByteArray> &types);

    /// What was handed over completely, in the order in which it was requested.
    OfferedContents contents() const;

    /// Another owner took the selection meanwhile: the answers may be of both.
    bool isOwnerReplaced() const { return isOwnerReplaced_; }

    /// The time was up before everything was answered.
    bool isCutShort() const { return isCutShort_; }

    const TransferBudget &budget() const { return budget_; }

  Q_SIGNALS:
    /// From the event loop: everything was answered, the time is up, or the owner is gone.
    void settled();

  private:
    struct Transfer {
        QByteArray type;
        std::unique_ptr<PipeReader> reader;
        bool isBelieved = false;
    };

    void requestMore();
    void handleOffer(Selection changed);
    void handleAdvance();
    void handleDeadline();
    void confirmEnds();
    void waitForAnswers();
    bool isComplete(const Transfer &transfer) const;
    bool isAnswered(const Transfer &transfer) const;
    qsizetype received() const;
    bool dropLargest();
    void settle();

    DataControl &control_;
    Selection selection_;
    std::shared_ptr<DataOffer> offer_;
    TransferBudget budget_;
    TransferBounds bounds_;
    QTimer deadline_;
    std::vector<Transfer> transfers_;
    bool isConfirming_ = false;
    bool isOwnerReplaced_ = false;
    bool isGivenUp_ = false;
    bool isCutShort_ = false;
    bool isSettled_ = false;
};

} // namespace quillmender::wayland
