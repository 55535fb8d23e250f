#pragma once

#include <QtGlobal>

namespace quillmender::bench {

/// Memory of a process that is its own, with its share of what others map too, in KiB.
qint64 proportionalMemory(qint64 processId);

/// How often its threads have been switched off a processor so far, whoever wanted it: a thread
/// that sleeps has one for each time that it woke.
qint64 contextSwitches(qint64 processId);

/// Returns when none of its threads has run for half a second.
void waitUntilIdle(qint64 processId);

} // namespace quillmender::bench
