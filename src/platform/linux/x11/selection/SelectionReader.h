#pragma once

#include "platform/linux/x11/selection/ParallelConversions.h"
#include "platform/linux/x11/selection/SelectionContents.h"

#include <QCoroTask>
#include <QString>

#include <optional>

namespace quillmender::x11 {

/// Reads what another client offers as one selection. No answer of that client is waited for
/// longer than a TransferBudget allows, nor more of it held than the TransferBounds.
class SelectionReader {
  public:
    SelectionReader(X11Connection &connection, xcb_atom_t selection,
                    const TransferBounds &bounds = {})
        : connection_(connection),
          selection_(selection),
          bounds_(bounds) {}

    struct Reading {
        SelectionContents contents;
        /// The time was up before everything was answered: more can perhaps be had with more time.
        bool isCutShort = false;
    };

    /// Every data target, each as its owner answered it; what it did not answer, or what is larger
    /// than the bounds, is left out. Of one owner only: when another takes over meanwhile, its
    /// contents are read instead.
    QCoro::Task<Reading> readAll(TransferBudget whole = TransferBudget());

    /// The names of the data targets.
    QCoro::Task<QList<QByteArray>> offered();

    /// The best plain text on offer, of 64 MiB at most.
    QCoro::Task<std::optional<QString>>
    readText(std::chrono::milliseconds limit = std::chrono::seconds(5));

  private:
    struct Targets {
        QList<xcb_atom_t> list;
        bool isOwnerReplaced = false;
        bool isCutShort = false;
        TransferBudget budget;
    };

    QCoro::Task<std::optional<Reading>> readOnce(TransferBudget budget);
    QCoro::Task<Targets> readTargets(xcb_timestamp_t time, TransferBudget budget);
    QList<xcb_atom_t> dataTargets(const QList<quint32> &offered);
    bool hasOwner() const;

    X11Connection &connection_;
    xcb_atom_t selection_;
    TransferBounds bounds_;
};

} // namespace quillmender::x11
