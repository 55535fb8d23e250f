#pragma once

#include "platform/linux/atspi/BusApplications.h"
#include "platform/linux/atspi/FocusMemory.h"
#include "platform/linux/atspi/TreeWalk.h"

namespace quillmender::atspi {

/// Finds the object with the focus in the frontmost application: what the application said of
/// late, then what it answers when asked for its focused objects, then a bounded walk. While this
/// program is in front, the frontmost application has no focus to show; then it is the object
/// that had it last.
///
/// The frontmost application is given by its process. Where the window system does not tell it (0),
/// it is the one that has a frame with the state ACTIVE, if only one has.
class FocusFinder {
  public:
    /// What it finds it adds to the memory.
    FocusFinder(AtspiBus &bus, BusApplications &applications, FocusMemory &memory)
        : bus_(bus),
          applications_(applications),
          memory_(memory) {}

    /// The object that most probably has the focus there; nothing when none was heard of yet.
    std::optional<ObjectRef> likely(qint64 process) const;

    /// An object with text, a password field among them; nothing when there is none.
    QCoro::Task<std::optional<ElementTraits>> find(qint64 process, CallBudgetRef budget);

    /// Whether the object's application has said of late that something else has the focus, and it
    /// still has.
    QCoro::Task<bool> seesFocusBeside(ObjectRef object, CallBudgetRef budget);

    /// The frontmost application's name on the bus; empty when it is not there.
    QCoro::Task<QString> serviceInFront(qint64 process, CallBudgetRef budget);

  private:
    struct Recollection {
        std::optional<ElementTraits> focused;  ///< has the focus now, and text
        std::optional<ElementTraits> lastHeld; ///< had it last, and text
        bool focusIsElsewhere = false;         ///< something without text has it now
    };

    QCoro::Task<std::optional<ElementTraits>> findInActiveFrame(CallBudgetRef budget);
    QCoro::Task<QString> serviceWithActiveFrame(CallBudgetRef budget);
    QCoro::Task<QStringList> servicesOf(qint64 process, QStringList candidates,
                                        CallBudgetRef budget);
    QCoro::Task<Recollection> recollect(QString service, CallBudgetRef budget);
    /// What says of itself, to who asks for that, that it has the focus and text.
    QCoro::Task<std::optional<ElementTraits>> match(QString service, CallBudgetRef budget);
    QCoro::Task<std::optional<ElementTraits>>
    search(QString service, std::optional<ElementTraits> lastHeld, CallBudgetRef budget);

    AtspiBus &bus_;
    BusApplications &applications_;
    FocusMemory &memory_;
};

} // namespace quillmender::atspi
