#include "bench/Figures.h"
#include "bench/ProcessFacts.h"
#include "bench/Programs.h"
#include "bench/Report.h"
#include "bench/Stage.h"
#include "bench/StatusNotifierHost.h"

namespace quillmender::bench {

namespace {

struct StartSamples {
    Samples eventLoop;
    Samples statusItem;
    Samples memory;

    void measure(harness::AnyDesktop &desktop, StatusNotifierHost &host,
                 const TrayProgram &program) {
        const StartedProgram started(desktop, host, program);
        waitUntilIdle(started.pid());
        eventLoop.add(started.eventLoopMs());
        statusItem.add(started.statusItemMs());
        memory.add(static_cast<double>(proportionalMemory(started.pid())));
    }
};

QString inMebibytes(const Samples &kibibytes) {
    return QStringLiteral("%1 MiB (n %2)")
        .arg(kibibytes.median() / 1024, 0, 'f', 1)
        .arg(kibibytes.count());
}

} // namespace

void measureStart(Report &report, const Effort &effort) {
    const std::unique_ptr<Stage> stage = Stage::open(effort.on);
    harness::AnyDesktop &desktop = stage->desktop();
    StatusNotifierHost host(desktop.sessionBus().connection());
    configureProvider(desktop, QStringLiteral("http://127.0.0.1:9"));

    // The first ones fill the system's caches.
    StartSamples unused;
    unused.measure(desktop, host, quillmenderProgram());
    unused.measure(desktop, host, floorTrayProgram());
    StartSamples program;
    StartSamples floor;
    for (int i = 0; i < effort.repetitions; ++i) {
        program.measure(desktop, host, quillmenderProgram());
        floor.measure(desktop, host, floorTrayProgram());
    }

    report.compare(QStringLiteral("start to event loop"), program.eventLoop, floor.eventLoop, 1.5);
    report.compare(QStringLiteral("start to item in the status area"), program.statusItem,
                   floor.statusItem, 1.5);
    constexpr double memoryFactor = 1.6;
    report.add({QStringLiteral("idle PSS"),
                QStringLiteral("%1, × %2")
                    .arg(inMebibytes(program.memory))
                    .arg(program.memory.median() / floor.memory.median(), 0, 'f', 2),
                inMebibytes(floor.memory), QStringLiteral("≤ 1.6 × floor"),
                program.memory.median() <= memoryFactor * floor.memory.median()});
    report.note(QStringLiteral(
        "Start: from before the fork until a question on the session bus that is answered by the "
        "event loop of the main thread has its answer; it is asked at the moment at which the "
        "program's name is on the bus. Floor: a Qt program with a status item and such a name."));
}

} // namespace quillmender::bench
