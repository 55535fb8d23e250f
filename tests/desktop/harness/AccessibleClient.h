#pragma once

#include "desktop/harness/Accessible.h"
#include "desktop/harness/Waiter.h"

#include <functional>
#include <optional>

namespace quillmender::harness {

class AccessibilityBus;

/// Finds widgets of running applications on the accessibility bus, as a screen reader would.
class AccessibleClient {
  public:
    using Predicate = std::function<bool(const Accessible &)>;

    explicit AccessibleClient(const AccessibilityBus &bus);
    /// A connection to an accessibility bus.
    explicit AccessibleClient(QDBusConnection bus) : bus_(std::move(bus)) {}

    /// The application object of a process, if it is on the bus.
    std::optional<Accessible> application(qint64 processId) const;

    /// The first widget of the process, in depth-first order, for which the predicate holds.
    std::optional<Accessible> find(qint64 processId, const Predicate &predicate) const;
    QList<Accessible> findAll(qint64 processId, const Predicate &predicate) const;

    /// The same by role and name; an empty one matches all.
    std::optional<Accessible> find(qint64 processId, const QString &roleName,
                                   const QString &name = {}) const;

    /// Waits until it is there; throws HarnessError with the tree of the application when it is not
    /// before the deadline.
    Accessible waitFor(qint64 processId, const QString &roleName, const QString &name = {},
                       std::chrono::milliseconds deadline = defaultDeadline) const;

    /// The widget of the process that has the keyboard focus and a text.
    Accessible waitForFocusedText(qint64 processId,
                                  std::chrono::milliseconds deadline = defaultDeadline) const;

    /// Role, name and place of every widget of the process, one per line.
    QString tree(qint64 processId) const;

  private:
    QDBusConnection bus_;
};

} // namespace quillmender::harness
