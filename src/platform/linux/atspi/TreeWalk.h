#pragma once

#include "platform/linux/atspi/AtspiBus.h"

#include <optional>

namespace quillmender::atspi {

/// An object and what it says of itself.
struct ElementTraits {
    ObjectRef object;
    uint role = roles::unknown;
    StateSet states;
    QStringList interfaces;

    bool isFocused() const { return states.has(State::focused); }
    bool hasText() const;
};

/// Asks all objects at the same time. An object that does not answer has no traits to speak of.
QCoro::Task<QList<ElementTraits>> examine(AtspiBus &bus, QList<ObjectRef> objects,
                                          CallBudgetRef budget);

QCoro::Task<QList<ObjectRef>> childrenOf(AtspiBus &bus, ObjectRef object, CallBudgetRef budget);

/// Looks for a focused object with text below `tops`, level by level, bounded in time and
/// number. Prunes on the state VISIBLE: GTK 4 does not maintain SHOWING.
QCoro::Task<std::optional<ElementTraits>> findFocusedBelow(AtspiBus &bus, QList<ObjectRef> tops,
                                                           CallBudgetRef budget);

/// Asks the application itself (its Collection interface) for its focused objects.
QCoro::Task<QList<ObjectRef>> matchFocused(AtspiBus &bus, QString service, CallBudgetRef budget);

} // namespace quillmender::atspi
