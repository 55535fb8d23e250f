#pragma once

#include <QHash>
#include <QString>

namespace quillmender::bench {

/// Memory of a process that is its own, with its share of what others map too, in KiB.
qint64 proportionalMemory(qint64 processId);

/// How often each of its threads has been switched off a processor so far, whoever wanted it: one
/// that sleeps has been for each time that it woke.
QHash<QString, qint64> contextSwitches(qint64 processId);

/// How often that was since then. What a thread that has ended did is not known.
qint64 contextSwitchesSince(const QHash<QString, qint64> &before, qint64 processId);

/// Returns when none of its threads has run for some seconds.
void waitUntilIdle(qint64 processId);

} // namespace quillmender::bench
