#pragma once

#include "platform/linux/atspi/AtspiBus.h"
#include "platform/linux/atspi/AtspiTypes.h"

#include <QCoroTask>

namespace quillmender::atspi {

/// What stands before and after a paragraph that is an object of its own, as in Writer: such an
/// object tells of its own part of a selection only.
class TextFlow {
  public:
    explicit TextFlow(AtspiBus &bus) : bus_(bus) {}

    /// Whether the paragraph before or after it has selected text too. Empty ones are passed over.
    QCoro::Task<bool> selectionGoesOn(ObjectRef paragraph, CallBudgetRef budget);

  private:
    QCoro::Task<bool> selectionGoesOnTowards(uint relation, ObjectRef paragraph,
                                             CallBudgetRef budget);
    QCoro::Task<ObjectRef> neighbour(uint relation, ObjectRef paragraph, CallBudgetRef budget);

    AtspiBus &bus_;
};

} // namespace quillmender::atspi
