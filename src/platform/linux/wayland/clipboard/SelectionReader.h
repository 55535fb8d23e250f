#pragma once

#include "platform/linux/TransferBounds.h"
#include "platform/linux/TransferBudget.h"
#include "platform/linux/wayland/clipboard/DataControl.h"
#include "platform/linux/wayland/clipboard/OfferedContents.h"

#include <QCoroTask>
#include <QString>

#include <optional>

namespace quillmender::wayland {

/// Reads what another client offers as one selection. No answer of that client is waited for
/// longer than a TransferBudget allows, nor more of it held than the TransferBounds.
class SelectionReader {
  public:
    SelectionReader(DataControl &control, Selection selection, const TransferBounds &bounds = {})
        : control_(control),
          selection_(selection),
          bounds_(bounds) {}

    struct Reading {
        OfferedContents contents;
        /// The time was up before everything was answered: more can perhaps be had with more time.
        bool isCutShort = false;
    };

    /// Every type of what is known to be there, each as its owner handed it over; what it did not,
    /// or what is larger than the bounds, is left out. Of one owner only: when another takes over
    /// meanwhile, its contents are read instead.
    QCoro::Task<Reading> readAll(TransferBudget whole = TransferBudget());

    /// The best plain text that the compositor has on offer now, of 64 MiB at most.
    QCoro::Task<std::optional<QString>>
    readText(std::chrono::milliseconds limit = std::chrono::seconds(5));

  private:
    struct Attempt {
        Reading reading;
        bool isOwnerReplaced = false;
    };

    QCoro::Task<Attempt> readOnce(QList<QByteArray> types, TransferBudget budget,
                                  TransferBounds bounds);
    QList<QByteArray> offeredTypes() const;

    DataControl &control_;
    Selection selection_;
    TransferBounds bounds_;
};

} // namespace quillmender::wayland
