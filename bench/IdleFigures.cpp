#include "bench/Editor.h"
#include "bench/Figures.h"
#include "bench/ProcessFacts.h"
#include "bench/Programs.h"
#include "bench/Report.h"
#include "bench/Stage.h"
#include "bench/StatusNotifierHost.h"

#include <QTimer>

namespace quillmender::bench {

namespace {

struct Switches {
    const StartedProgram &program;
    const StartedProgram &floor;
    QHash<QString, qint64> programBefore = contextSwitches(program.pid());
    QHash<QString, qint64> floorBefore = contextSwitches(floor.pid());

    void addTo(Report &report, const QString &figure) const {
        const qint64 ofProgram = contextSwitchesSince(programBefore, program.pid());
        const qint64 ofFloor = contextSwitchesSince(floorBefore, floor.pid());
        report.add({figure, QString::number(ofProgram), QString::number(ofFloor),
                    QStringLiteral("0"), ofProgram == 0});
    }
};

void waitFor(std::chrono::milliseconds time) {
    bool isOver = false;
    QTimer::singleShot(time, [&] { isOver = true; });
    harness::waitUntil([&] { return isOver; }, QStringLiteral("some time passes"), time * 2);
}

} // namespace

void measureIdle(Report &report, const Effort &effort) {
    const std::unique_ptr<Stage> stage = Stage::open(effort.on);
    harness::AnyDesktop &desktop = stage->desktop();
    StatusNotifierHost host(desktop.sessionBus().connection());
    configureProvider(desktop, QStringLiteral("http://127.0.0.1:9"));
    Editor editor(desktop, Editor::Kind::mousepad);
    const StartedProgram program(desktop, host, quillmenderProgram());
    const StartedProgram floor(desktop, host, floorTrayProgram());
    editor.activate();
    // The title of the editor's window changes with the first key.
    desktop.input().type(QStringLiteral("a"));
    // Half a minute after its start Qt forgets the pictures that it kept of the window's icon.
    constexpr std::chrono::seconds afterStart(32);
    waitUntilIdle(program.pid(), afterStart);
    waitUntilIdle(floor.pid());

    const Switches idle{program, floor};
    waitFor(std::chrono::seconds(effort.idleSeconds));
    idle.addTo(report, QStringLiteral("wake-ups in %1 s idle").arg(effort.idleSeconds));

    const Switches typing{program, floor};
    for (int key = 0; key < effort.typedKeys; ++key) {
        desktop.input().type(key % 8 == 7 ? QStringLiteral(" ") : QStringLiteral("a"));
        waitFor(std::chrono::milliseconds(20));
    }
    editor.waitForCharacterCount(effort.typedKeys + 1);
    typing.addTo(
        report,
        QStringLiteral("wake-ups while %1 keys are typed in mousepad").arg(effort.typedKeys));
    report.note(QStringLiteral("Wake-ups: context switches of all threads, voluntary or not, with "
                               "accessibility switched on."));
}

} // namespace quillmender::bench
