#include "bench/Editor.h"
#include "bench/Figures.h"
#include "bench/PaintWatch.h"
#include "bench/ProcessFacts.h"
#include "bench/Programs.h"
#include "bench/Report.h"
#include "desktop/harness/ChildProcess.h"

#include <X11/keysym.h>
#include <algorithm>

namespace quillmender::bench {

namespace {

using harness::ChildProcess;
using std::chrono::steady_clock;

constexpr QSize panelSize(620, 620);
constexpr double frameMs = 16;
constexpr double copyChordWaitsMs = 120 + 50;
// Where a compositor shows it with one of its own pictures of the screen.
constexpr double pictureLimitMs = 40;
constexpr double pictureFactor = 2;

// A program that shows a window when its hot key is pressed.
struct Shower {
    QString file;
    QString windowTitle;
    harness::UserInput::Keysym key;
};

class HotKeyBench {
  public:
    HotKeyBench(Stage &stage, harness::WindowId editor)
        : quillmender{QStringLiteral("quillmender"), QStringLiteral("Quillmender"), XK_space},
          floor{stage.windowFloor(), QStringLiteral("Floor"), XK_Return},
          stage_(stage),
          editor_(editor) {}

    const Shower quillmender;
    const Shower floor;

    std::unique_ptr<ChildProcess> start(const Shower &shower) {
        const QString program = besideThis(shower.file);
        stage_.desktop().prepareFor(program);
        auto process = std::make_unique<ChildProcess>(stage_.desktop().command(program));
        waitUntilIdle(process->pid());
        return process;
    }

    double showAndHideMs(const Shower &shower, const ChildProcess &process) {
        stage_.desktop().windows().activate(editor_);
        stage_.paint().waitUntilStill(std::chrono::milliseconds(150));
        stage_.paint().start();
        harness::UserInput &input = stage_.desktop().input();
        input.press(XK_Control_L);
        input.press(XK_Alt_L);
        const TimePoint pressed = steady_clock::now();
        input.press(shower.key);
        input.release(shower.key);
        input.release(XK_Alt_L);
        input.release(XK_Control_L);
        const double time = milliseconds(pressed, stage_.paint().waitForPaint(panelSize));
        stage_.waitForWindow(process.pid(), shower.windowTitle);
        stage_.close(process.pid(), shower.windowTitle);
        stage_.waitUntilHidden(process.pid(), shower.windowTitle);
        return time;
    }

  private:
    Stage &stage_;
    harness::WindowId editor_;
};

struct ShowSamples {
    Samples first;
    Samples later;
};

void measureShows(HotKeyBench &bench, int repetitions, ShowSamples &program, ShowSamples &floor) {
    for (int i = 0; i < repetitions; ++i) {
        {
            const auto process = bench.start(bench.quillmender);
            program.first.add(bench.showAndHideMs(bench.quillmender, *process));
        }
        const auto process = bench.start(bench.floor);
        floor.first.add(bench.showAndHideMs(bench.floor, *process));
    }
    const auto programProcess = bench.start(bench.quillmender);
    const auto floorProcess = bench.start(bench.floor);
    bench.showAndHideMs(bench.quillmender, *programProcess);
    bench.showAndHideMs(bench.floor, *floorProcess);
    for (int i = 0; i < repetitions; ++i) {
        program.later.add(bench.showAndHideMs(bench.quillmender, *programProcess));
        floor.later.add(bench.showAndHideMs(bench.floor, *floorProcess));
    }
}

// An X server shows at once what is drawn, a compositor with its next picture.
double laterLimit(const Effort &effort, const Samples &floor) {
    return effort.on == StageKind::x11 ? frameMs
                                       : std::min(pictureLimitMs, pictureFactor * floor.median());
}

// As fast as the later ones, but for what being first costs the floor too (what other programs had
// in the processor's caches, what the X server learns of a new client), and for how far the medians
// of equal things lie apart.
double firstLimit(const ShowSamples &program, const ShowSamples &floor) {
    constexpr double apart = 1.05;
    return apart *
           (program.later.median() + std::max(0.0, floor.first.median() - floor.later.median()));
}

void measureThroughAccessibility(Report &report, const Effort &effort) {
    const std::unique_ptr<Stage> stage = Stage::open(effort.on);
    configureProvider(stage->desktop(), QStringLiteral("http://127.0.0.1:9"));
    Editor editor(stage->desktop(), Editor::Kind::mousepad);
    constexpr qsizetype textBytes = 1024;
    editor.fill(sampleText(textBytes));
    HotKeyBench bench(*stage, editor.window());
    ShowSamples program;
    ShowSamples floor;
    measureShows(bench, effort.repetitions, program, floor);
    report.limit(QStringLiteral("hot key to panel painted, first"), program.first, floor.first,
                 effort.on == StageKind::x11 ? firstLimit(program, floor)
                                             : laterLimit(effort, floor.first));
    report.limit(QStringLiteral("hot key to panel painted, later"), program.later, floor.later,
                 laterLimit(effort, floor.later));
}

void measureThroughCopyChord(Report &report, const Effort &effort) {
    const std::unique_ptr<Stage> stage = Stage::open(effort.on);
    harness::AnyDesktop &desktop = stage->desktop();
    configureProvider(desktop, QStringLiteral("http://127.0.0.1:9"));
    const harness::TestApplication editor(desktop, QStringLiteral("env"),
                                          {QStringLiteral("NO_AT_BRIDGE=1"),
                                           QStringLiteral("mousepad"),
                                           QStringLiteral("--disable-server")});
    desktop.input().type(QStringLiteral("some words that are copied"));
    desktop.input().chord({XK_Control_L, XK_a});
    HotKeyBench bench(*stage, editor.window());
    ShowSamples program;
    ShowSamples floor;
    measureShows(bench, effort.repetitions, program, floor);
    report.limit(QStringLiteral("the same through the copy chord, first"), program.first,
                 floor.first,
                 effort.on == StageKind::x11 ? firstLimit(program, floor)
                                             : copyChordWaitsMs + laterLimit(effort, floor.first));
    report.limit(QStringLiteral("the same through the copy chord, later"), program.later,
                 floor.later, copyChordWaitsMs + laterLimit(effort, floor.later));
}

QString note(StageKind on) {
    if (on == StageKind::x11)
        return QStringLiteral(
            "Panel: from before the key event is sent to the X server until the server tells that "
            "an area of 620 × 620 has been drawn. First: a new process for each, idle since its "
            "start, and as fast as the later ones but for what being first costs the floor, give "
            "or take 5 %. "
            "Through the copy chord with its fixed waits of 170 ms. Selection of 1 KB in mousepad. "
            "Floor: a Qt program that answers a grabbed key with an empty window.");
    QString text = QStringLiteral(
        "Panel: from before the user's key is sent to the compositor until the first of the "
        "compositor's pictures of the screen (wlr-screencopy, with its own time of each; one every "
        "16.7 ms at most) in which the middle 620 × 620 look, but for 1 in 100 of the pixels, as "
        "they do when everything is still. First: a new process for each, idle since its start. "
        "Through the copy chord with its fixed waits of 170 ms. Selection of 1 KB in mousepad. "
        "Targets: twice the floor, and at most 40 ms. Floor: a Qt program that answers a bound key "
        "with an empty layer.");
    if (on == StageKind::kwin)
        text += QStringLiteral(" KWin is nested in a headless sway, whose pictures are looked at: "
                               "each has waited for two compositors.");
    return text;
}

} // namespace

void measurePanel(Report &report, const Effort &effort) {
    measureThroughAccessibility(report, effort);
    measureThroughCopyChord(report, effort);
    report.note(note(effort.on));
}

} // namespace quillmender::bench
