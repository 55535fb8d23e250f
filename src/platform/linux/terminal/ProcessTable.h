#pragma once

#include <QByteArrayList>
#include <QList>
#include <QSet>

#include <optional>
#include <sys/types.h>

namespace quillmender {

/// A process as the kernel tells of it.
struct ProcessEntry {
    qint64 id = 0;
    char state = '?';
    qint64 parent = 0;
    qint64 group = 0;
    qint64 session = 0;
    /// The device of the controlling terminal; 0 when it has none.
    dev_t terminal = 0;
    /// The process group in the foreground of that terminal.
    qint64 foregroundGroup = 0;
};

/// All processes that this one may see, at one moment.
class ProcessTable {
  public:
    static ProcessTable read();

    const QList<ProcessEntry> &entries() const { return entries_; }

    /// The process and all that descend from it.
    QList<qint64> familyOf(qint64 process) const;

    bool isAncestor(qint64 ancestor, qint64 process) const;

  private:
    QList<ProcessEntry> entries_;
};

/// Whether somebody has stopped the process, so that it sees nothing until it may go on.
bool isStopped(qint64 process);

/// The terminal devices whose other end the process holds, as a terminal emulator does. Absent when
/// that cannot be told; none for a process that has ended.
std::optional<QSet<dev_t>> terminalsHeldBy(qint64 process);

/// The base name of the program's file; empty when it cannot be told.
QByteArray programOf(qint64 process);

/// Null characters end each; empty when they cannot be told.
QByteArrayList argumentsOf(qint64 process);

/// Empty when it is not set or cannot be told.
QByteArray environmentOf(qint64 process, const QByteArray &name);

/// Whether every thread of the process waits for a child to end and so reads nothing.
bool isWaitingForChild(qint64 process);

/// Whether the process has the device as a standard stream and the device hands on single keys
/// instead of whole lines.
bool readsKeysOf(qint64 process, dev_t device);

} // namespace quillmender
