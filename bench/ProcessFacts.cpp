#include "bench/ProcessFacts.h"

#include "desktop/harness/Waiter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

namespace quillmender::bench {

namespace {

// The numbers behind all lines of the file that start so.
qint64 sumOfLines(const QString &path, const QByteArrayList &starts) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    qint64 sum = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        for (const QByteArray &start : starts) {
            if (line.startsWith(start))
                sum += line.mid(start.size()).simplified().split(' ').value(0).toLongLong();
        }
    }
    return sum;
}

} // namespace

qint64 proportionalMemory(qint64 processId) {
    return sumOfLines(QStringLiteral("/proc/%1/smaps_rollup").arg(processId), {"Pss:"});
}

QHash<QString, qint64> contextSwitches(qint64 processId) {
    const QString tasks = QStringLiteral("/proc/%1/task").arg(processId);
    QHash<QString, qint64> switches;
    for (const QString &task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        switches[task] = sumOfLines(tasks + QLatin1Char('/') + task + QStringLiteral("/status"),
                                    {"voluntary_ctxt_switches:", "nonvoluntary_ctxt_switches:"});
    }
    return switches;
}

qint64 contextSwitchesSince(const QHash<QString, qint64> &before, qint64 processId) {
    const auto now = contextSwitches(processId);
    qint64 sum = 0;
    for (auto task = now.cbegin(); task != now.cend(); ++task)
        sum += *task - before.value(task.key());
    return sum;
}

void waitUntilIdle(qint64 processId, std::chrono::milliseconds quiet) {
    QHash<QString, qint64> switches;
    QElapsedTimer sinceLast;
    harness::waitUntil(
        [&] {
            if (const auto now = contextSwitches(processId); now != switches) {
                switches = now;
                sinceLast.start();
            }
            return sinceLast.hasExpired(quiet.count());
        },
        QStringLiteral("process %1 is idle").arg(processId), 4 * quiet + std::chrono::seconds(20));
}

} // namespace quillmender::bench
