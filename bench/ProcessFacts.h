#pragma once

#include <QHash>
#include <QString>

#include <chrono>

namespace quillmender::bench {

/// Memory of a process that is its own, with its share of what others map too, in KiB.
qint64 proportionalMemory(qint64 processId);

/// How often each of its threads has been switched off a processor so far, whoever wanted it: one
/// that sleeps has been for each time that it woke.
QHash<QString, qint64> contextSwitches(qint64 processId);

/// How often that was since then. What a thread that has ended did is not known.
qint64 contextSwitchesSince(const QHash<QString, qint64> &before, qint64 processId);

/// Longer than what the program prepares after its start waits for its quiet moment.
inline constexpr std::chrono::milliseconds quietMoment{2500};

/// Returns when none of its threads has run for so long.
void waitUntilIdle(qint64 processId, std::chrono::milliseconds quiet = quietMoment);

} // namespace quillmender::bench
