#include "bench/DamageWatch.h"
#include "bench/Figures.h"
#include "bench/ProcessFacts.h"
#include "bench/Programs.h"
#include "bench/Report.h"
#include "bench/StatusNotifierHost.h"
#include "desktop/harness/Desktop.h"
#include "desktop/harness/ProductProcess.h"
#include "platform/linux/services/SettingsFile.h"
#include "platform/none/NoneLoginItem.h"
#include "platform/none/NoneSecrets.h"
#include "settings/SettingsStore.h"

namespace quillmender::bench {

namespace {

using harness::ProductProcess;
using harness::waitUntil;
using std::chrono::steady_clock;

const auto settingsTitle = QStringLiteral("Quillmender Settings");
const auto aboutTitle = QStringLiteral("About Quillmender");
const auto panelTitle = QStringLiteral("Quillmender");
constexpr QSize settingsSize(760, 800);
constexpr int customActions = 100;

// The program, told over the bus to show its windows.
class WindowBench {
  public:
    explicit WindowBench(harness::Desktop &desktop)
        : desktop_(desktop),
          paint_(desktop.display()),
          product_(desktop, {}) {
        product_.waitUntilReady();
        waitUntilIdle(product_.pid());
    }

    qint64 pid() const { return product_.pid(); }

    double settingsPaintedMs() {
        paint_.waitUntilStill(std::chrono::milliseconds(150));
        paint_.start();
        const TimePoint asked = steady_clock::now();
        product_.activateAction(QStringLiteral("settings"));
        const double time = milliseconds(asked, paint_.waitForPaint(settingsSize));
        close(settingsTitle);
        return time;
    }

    void openAndClose(const QString &action, const QString &title) {
        product_.activateAction(action);
        close(title);
    }

    void openAndCloseAll() {
        openAndClose(QStringLiteral("settings"), settingsTitle);
        openAndClose(QStringLiteral("about"), aboutTitle);
        openAndClose(QStringLiteral("transform"), panelTitle);
    }

  private:
    void close(const QString &title) {
        xcb_window_t window = XCB_WINDOW_NONE;
        waitUntil(
            [&] {
                window = desktop_.windows().titled(title);
                return window != XCB_WINDOW_NONE && desktop_.windows().active() == window;
            },
            title + QStringLiteral(" is active"));
        desktop_.windows().close(window);
        waitUntil([&] { return desktop_.windows().titled(title) == XCB_WINDOW_NONE; },
                  title + QStringLiteral(" is closed"));
    }

    harness::Desktop &desktop_;
    DamageWatch paint_;
    ProductProcess product_;
};

void addTime(Report &report, const QString &figure, const Samples &samples) {
    report.add({figure, inMilliseconds(samples), QStringLiteral("-"), QStringLiteral("-"), true});
}

// A title that has to be elided, as a prompt that was pasted into the wrong field is.
QString longTitle(int number) {
    return QStringLiteral("Custom %1 ").arg(number) +
           QStringLiteral("with a title that nobody reads to its end ").repeated(20);
}

void measureShows(Report &report, harness::Desktop &desktop, int repetitions, const QString &what) {
    Samples first;
    for (int i = 0; i < repetitions; ++i)
        first.add(WindowBench(desktop).settingsPaintedMs());
    WindowBench bench(desktop);
    bench.settingsPaintedMs();
    Samples later;
    for (int i = 0; i < repetitions; ++i)
        later.add(bench.settingsPaintedMs());
    addTime(report, what + QStringLiteral(", first"), first);
    addTime(report, what + QStringLiteral(", later"), later);
}

Samples keystrokes(SettingsStore &store, int count) {
    Samples times;
    QString model = QStringLiteral("model-");
    for (int i = 0; i < count; ++i) {
        model += u'x';
        const TimePoint before = steady_clock::now();
        store.setModel(AIProvider::openAI, model);
        times.add(milliseconds(before, steady_clock::now()));
    }
    return times;
}

// In this process, with the program's own code and file.
void measureKeystrokes(Report &report, int count) {
    constexpr double limitMs = 2;
    SettingsFile file;
    NoneSecrets secrets;
    NoneLoginItem loginItem;
    SettingsStore store(file, secrets, loginItem);
    report.limit(QStringLiteral("main-thread time to save a keystroke"), keystrokes(store, count),
                 {}, limitMs);
    QList<CustomAction> actions;
    for (int i = 0; i < customActions; ++i)
        actions.append({QUuid::createUuid(), longTitle(i),
                        QStringLiteral("Rewrite the following text.\n\nText:\n{{text}}")});
    store.setCustomActions(actions);
    report.limit(QStringLiteral("the same with %1 custom actions").arg(customActions),
                 keystrokes(store, count), {}, limitMs);
}

QString inMebibytes(qint64 kibibytes) {
    return QStringLiteral("%1 MiB").arg(static_cast<double>(kibibytes) / 1024, 0, 'f', 1);
}

void measureMemory(Report &report, harness::Desktop &desktop, int openings) {
    StatusNotifierHost host(desktop.sessionBus().connection());
    qint64 floorMemory = 0;
    {
        const StartedProgram floor(desktop, host, floorTrayProgram());
        waitUntilIdle(floor.pid());
        floorMemory = proportionalMemory(floor.pid());
    }
    WindowBench bench(desktop);
    bench.openAndCloseAll();
    waitUntilIdle(bench.pid());
    const qint64 once = proportionalMemory(bench.pid());
    constexpr double windowsFactor = 1.6;
    const double ratio = static_cast<double>(once) / static_cast<double>(floorMemory);
    report.add({QStringLiteral("PSS after all windows were open"),
                QStringLiteral("%1, × %2").arg(inMebibytes(once)).arg(ratio, 0, 'f', 2),
                inMebibytes(floorMemory), QStringLiteral("≤ 1.6 × floor"), ratio <= windowsFactor});

    const int warmUp = openings / 10;
    for (int i = 0; i < warmUp; ++i)
        bench.openAndClose(QStringLiteral("settings"), settingsTitle);
    waitUntilIdle(bench.pid());
    const qint64 early = proportionalMemory(bench.pid());
    for (int i = warmUp; i < openings; ++i)
        bench.openAndClose(QStringLiteral("settings"), settingsTitle);
    waitUntilIdle(bench.pid());
    const qint64 late = proportionalMemory(bench.pid());
    constexpr qint64 noise = 1024;
    report.add(
        {QStringLiteral("PSS after %1 and %2 openings of the settings").arg(warmUp).arg(openings),
         QStringLiteral("%1, %2").arg(inMebibytes(early), inMebibytes(late)), QStringLiteral("-"),
         QStringLiteral("no growth (≤ 1 MiB)"), late - early <= noise});
}

} // namespace

void measureWindows(Report &report, const Effort &effort) {
    harness::Desktop desktop;
    qputenv("XDG_CONFIG_HOME", desktop.folders().config().toUtf8());
    measureMemory(report, desktop, effort.openings);
    measureShows(report, desktop, effort.repetitions, QStringLiteral("settings painted"));
    measureKeystrokes(report, effort.typedKeys);
    measureShows(report, desktop, effort.repetitions,
                 QStringLiteral("settings with %1 long custom actions painted").arg(customActions));
    report.note(QStringLiteral(
        "Settings: from before they are asked for on the session bus until the X server tells that "
        "an area of their size has been drawn. Windows of the memory figure: settings, About, "
        "panel. Floor: a Qt program with a status item."));
}

} // namespace quillmender::bench
