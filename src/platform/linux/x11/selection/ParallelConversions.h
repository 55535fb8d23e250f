#pragma once

#include "platform/linux/TransferBounds.h"
#include "platform/linux/TransferBudget.h"
#include "platform/linux/x11/selection/SelectionConversion.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace quillmender::x11 {

/// Several conversions of one selection under way at once, with one deadline for all. What is not
/// finished when the group goes is left to itself.
class ParallelConversions : public QObject {
    Q_OBJECT

  public:
    ParallelConversions(X11Connection &connection, xcb_atom_t selection,
                        const TransferBudget &budget, const TransferBounds &bounds);
    ~ParallelConversions() override;

    /// Asks for the targets all at once; `settled` follows.
    void request(const QList<xcb_atom_t> &targets, xcb_timestamp_t time);

    /// In the order in which they were requested.
    const std::vector<std::unique_ptr<SelectionConversion>> &conversions() const {
        return conversions_;
    }

    /// Another owner took the selection meanwhile: the answers may be of both.
    bool isOwnerReplaced() const { return isOwnerReplaced_; }
    const TransferBudget &budget() const { return budget_; }

    /// The time was up before everything was answered.
    bool isCutShort() const { return isCutShort_; }

  Q_SIGNALS:
    /// Everything was answered, the time is up, or the owner is gone.
    void settled();

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void handleAdvance();
    void handleDeadline();
    qsizetype received() const;
    bool dropLargest();
    void waitForAnswers();
    void settle();

    X11Connection &connection_;
    xcb_atom_t selection_;
    TransferBudget budget_;
    TransferBounds bounds_;
    QTimer deadline_;
    std::vector<std::unique_ptr<SelectionConversion>> conversions_;
    bool isOwnerReplaced_ = false;
    bool isGivenUp_ = false;
    bool isCutShort_ = false;
    bool isSettled_ = false;
};

} // namespace quillmender::x11
