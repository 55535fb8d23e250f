#pragma once

#include "platform/linux/atspi/AtspiBus.h"

#include <optional>

namespace quillmender {

/// An object and what it says of itself.
struct Traits {
    ObjectRef object;
    uint role = atspi_role::unknown;
    StateSet states;
    QStringList interfaces;

    bool isFocused() const { return states.has(State::focused); }
    bool hasText() const;
};

/// Asks all objects at the same time. An object that does not answer has no traits to speak of.
QCoro::Task<QList<Traits>> examine(AtspiBus &bus, QList<ObjectRef> objects, BudgetRef budget);

QCoro::Task<QList<ObjectRef>> childrenOf(AtspiBus &bus, ObjectRef object, BudgetRef budget);

/// Looks for a focused object with text below `tops`, level by level, bounded in time and
/// number. Prunes on the state VISIBLE: GTK 4 does not maintain SHOWING.
QCoro::Task<std::optional<Traits>> findFocusedBelow(AtspiBus &bus, QList<ObjectRef> tops,
                                                    BudgetRef budget);

/// Asks the application itself (its Collection interface) for its focused objects.
QCoro::Task<QList<ObjectRef>> matchFocused(AtspiBus &bus, QString service, BudgetRef budget);

} // namespace quillmender
