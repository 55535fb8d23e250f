#pragma once

#include "platform/linux/atspi/AtspiBus.h"
#include "platform/linux/atspi/AtspiTypes.h"

#include <QCoroTask>

namespace quillmender {

/// What stands before and after a paragraph that is an object of its own, as in Writer: such an
/// object tells of its own part of a selection only.
class TextFlow {
  public:
    explicit TextFlow(AtspiBus &bus) : bus_(bus) {}

    /// Whether the paragraph before or after it has selected text too. Empty ones are passed over.
    QCoro::Task<bool> isSelectedBeside(ObjectRef paragraph, BudgetRef budget);

  private:
    QCoro::Task<bool> isSelectedTowards(uint relation, ObjectRef paragraph, BudgetRef budget);
    QCoro::Task<ObjectRef> neighbour(uint relation, ObjectRef paragraph, BudgetRef budget);

    AtspiBus &bus_;
};

} // namespace quillmender
