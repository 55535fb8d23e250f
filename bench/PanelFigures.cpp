#include "bench/Editor.h"
#include "bench/Figures.h"
#include "bench/PaintWatch.h"
#include "bench/ProcessFacts.h"
#include "bench/Programs.h"
#include "bench/Report.h"
#include "desktop/harness/ProductProcess.h"
#include "desktop/harness/Screenshot.h"

#include <X11/keysym.h>

namespace quillmender::bench {

namespace {

using harness::ChildProcess;
using harness::waitUntil;
using std::chrono::steady_clock;

constexpr QSize panelSize(620, 620);
constexpr double frameMs = 16;
constexpr double copyChordWaitsMs = 120 + 50;

// A program that shows a window when its hot key is pressed.
struct Shower {
    QString file;
    QString windowTitle;
    xcb_keysym_t key;
};

const Shower &quillmender() {
    static const Shower shower{QStringLiteral("quillmender"), QStringLiteral("Quillmender"),
                               XK_space};
    return shower;
}

const Shower &floorWindow() {
    static const Shower shower{QStringLiteral("floor-window"), QStringLiteral("Floor"), XK_Return};
    return shower;
}

class HotKeyBench {
  public:
    HotKeyBench(harness::Desktop &desktop, xcb_window_t editor)
        : desktop_(desktop),
          editor_(editor),
          paint_(desktop.display()) {}

    std::unique_ptr<ChildProcess> start(const Shower &shower) {
        auto process = std::make_unique<ChildProcess>(desktop_.command(besideThis(shower.file)));
        waitUntilIdle(process->pid());
        return process;
    }

    double showAndHideMs(const Shower &shower) {
        desktop_.windows().activate(editor_);
        paint_.waitUntilStill(std::chrono::milliseconds(150));
        paint_.start();
        harness::InputDriver &input = desktop_.input();
        input.press(XK_Control_L);
        input.press(XK_Alt_L);
        const TimePoint pressed = steady_clock::now();
        input.press(shower.key);
        input.release(shower.key);
        input.release(XK_Alt_L);
        input.release(XK_Control_L);
        const double time = milliseconds(pressed, paint_.waitForPaint(panelSize));
        hide(shower);
        return time;
    }

  private:
    void hide(const Shower &shower) {
        xcb_window_t window = XCB_WINDOW_NONE;
        waitUntil(
            [&] {
                window = desktop_.windows().titled(shower.windowTitle);
                return window != XCB_WINDOW_NONE && desktop_.windows().active() == window;
            },
            QStringLiteral("the window is active"));
        desktop_.windows().close(window);
        waitUntil([&] { return !desktop_.windows().isViewable(window); },
                  QStringLiteral("the window is hidden"));
    }

    harness::Desktop &desktop_;
    xcb_window_t editor_;
    PaintWatch paint_;
};

struct ShowSamples {
    Samples first;
    Samples later;
};

void measureShows(HotKeyBench &bench, int repetitions, ShowSamples &program, ShowSamples &floor) {
    for (int i = 0; i < repetitions; ++i) {
        {
            const auto process = bench.start(quillmender());
            program.first.add(bench.showAndHideMs(quillmender()));
        }
        const auto process = bench.start(floorWindow());
        floor.first.add(bench.showAndHideMs(floorWindow()));
    }
    const auto programProcess = bench.start(quillmender());
    const auto floorProcess = bench.start(floorWindow());
    bench.showAndHideMs(quillmender());
    bench.showAndHideMs(floorWindow());
    for (int i = 0; i < repetitions; ++i) {
        program.later.add(bench.showAndHideMs(quillmender()));
        floor.later.add(bench.showAndHideMs(floorWindow()));
    }
}

void measureThroughAccessibility(Report &report, int repetitions) {
    harness::Desktop desktop;
    configureProvider(desktop, QStringLiteral("http://127.0.0.1:9"));
    Editor editor(desktop, Editor::Kind::mousepad);
    constexpr qsizetype textBytes = 1024;
    editor.fill(sampleText(textBytes));
    HotKeyBench bench(desktop, editor.window());
    ShowSamples program;
    ShowSamples floor;
    measureShows(bench, repetitions, program, floor);
    report.limit(QStringLiteral("hot key to panel painted, first"), program.first, floor.first,
                 program.later.median());
    report.limit(QStringLiteral("hot key to panel painted, later"), program.later, floor.later,
                 frameMs);
}

void measureThroughCopyChord(Report &report, int repetitions) {
    harness::Desktop desktop;
    configureProvider(desktop, QStringLiteral("http://127.0.0.1:9"));
    const harness::TestApplication editor(desktop, QStringLiteral("env"),
                                          {QStringLiteral("NO_AT_BRIDGE=1"),
                                           QStringLiteral("mousepad"),
                                           QStringLiteral("--disable-server")});
    desktop.input().type(QStringLiteral("some words that are copied"));
    desktop.input().chord({XK_Control_L, XK_a});
    HotKeyBench bench(desktop, editor.window());
    ShowSamples program;
    ShowSamples floor;
    measureShows(bench, repetitions, program, floor);
    report.limit(QStringLiteral("the same through the copy chord, first"), program.first,
                 floor.first, program.later.median());
    report.limit(QStringLiteral("the same through the copy chord, later"), program.later,
                 floor.later, copyChordWaitsMs + frameMs);
}

} // namespace

void measurePanel(Report &report, const Effort &effort) {
    measureThroughAccessibility(report, effort.repetitions);
    measureThroughCopyChord(report, effort.repetitions);
    report.note(QStringLiteral(
        "Panel: from before the key event is sent to the X server until the server tells that an "
        "area of 620 × 620 has been drawn. First: a new process for each, idle since its start, "
        "and as fast as the later ones. "
        "Through the copy chord with its fixed waits of 170 ms. Selection of 1 KB in "
        "mousepad. Floor: a Qt program that answers a grabbed key with an empty window."));
}

} // namespace quillmender::bench
