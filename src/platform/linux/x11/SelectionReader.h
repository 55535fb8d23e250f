#pragma once

#include "platform/linux/x11/ConversionGroup.h"
#include "platform/linux/x11/SelectionContents.h"

#include <QCoroTask>
#include <QString>

#include <optional>

namespace quillmender {

/// Reads what another client offers as one selection. No answer of that client is waited for
/// longer than a TransferBudget allows.
class SelectionReader {
  public:
    SelectionReader(X11Connection &connection, xcb_atom_t selection)
        : connection_(connection),
          selection_(selection) {}

    /// Every data target, each as its owner answered it; what it did not answer is left out. Of
    /// one owner only: when another takes over meanwhile, its contents are read instead.
    QCoro::Task<SelectionContents> readAll();

    /// The names of the data targets.
    QCoro::Task<QList<QByteArray>> offered();

    /// The best plain text on offer.
    QCoro::Task<std::optional<QString>> readText();

  private:
    struct Targets {
        QList<xcb_atom_t> list;
        bool isOwnerReplaced = false;
        TransferBudget budget;
    };

    QCoro::Task<std::optional<SelectionContents>> readOnce();
    QCoro::Task<Targets> readTargets(xcb_timestamp_t time);
    QList<xcb_atom_t> dataTargets(const QList<quint32> &offered);
    bool hasOwner() const;

    X11Connection &connection_;
    xcb_atom_t selection_;
};

} // namespace quillmender
