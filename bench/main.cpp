#include "bench/Figures.h"
#include "bench/Report.h"
#include "desktop/harness/wayland/OrdinaryUser.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <exception>
#include <optional>

namespace {

using namespace quillmender;
using namespace quillmender::bench;

struct Group {
    const char *name;
    void (*measure)(Report &, const Effort &);
    bool isForX11Alone = false;
};

constexpr Group groups[] = {{"start", measureStart},     {"idle", measureIdle},
                            {"panel", measurePanel},     {"windows", measureWindows, true},
                            {"session", measureSession}, {"paste", measurePaste},
                            {"large", measureLargeText}};

struct Desktop {
    const char *name;
    StageKind kind;
};

constexpr Desktop desktops[] = {
    {"x11", StageKind::x11}, {"sway", StageKind::sway}, {"kwin", StageKind::kwin}};

std::optional<StageKind> desktopNamed(const QString &name) {
    for (const Desktop &desktop : desktops) {
        if (name == QLatin1String(desktop.name))
            return desktop.kind;
    }
    return std::nullopt;
}

bool measureGroup(const Group &group, Report &report, const Effort &effort) {
    try {
        group.measure(report, effort);
        return true;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s could not be measured: %s\n", group.name, error.what());
        return false;
    }
}

} // namespace

// Prints the table on standard output, and each figure on standard error as soon as it is there.
int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures Quillmender beside the floor programs."));
    parser.addHelpOption();
    const QCommandLineOption quick(QStringLiteral("quick"),
                                   QStringLiteral("Few repetitions, for a first impression."));
    const QCommandLineOption repetitions(QStringLiteral("repetitions"),
                                         QStringLiteral("How often each thing is measured."),
                                         QStringLiteral("count"));
    const QCommandLineOption on(QStringLiteral("on"),
                                QStringLiteral("The desktop: x11, sway or kwin."),
                                QStringLiteral("desktop"), QStringLiteral("x11"));
    parser.addOptions({quick, repetitions, on});
    parser.addPositionalArgument(
        QStringLiteral("group"),
        QStringLiteral(
            "start, idle, panel, windows (on X11 alone), session, paste or large; else all."),
        QStringLiteral("[group...]"));
    parser.process(application);

    Effort effort;
    if (parser.isSet(quick))
        effort = {.repetitions = 3, .idleSeconds = 5, .typedKeys = 50, .openings = 100};
    if (parser.isSet(repetitions))
        effort.repetitions = std::max(1, parser.value(repetitions).toInt());

    const std::optional<StageKind> desktop = desktopNamed(parser.value(on));
    if (!desktop) {
        std::fprintf(stderr, "There is no desktop %s.\n", qUtf8Printable(parser.value(on)));
        return 1;
    }
    effort.on = *desktop;
    if (effort.on != StageKind::x11)
        harness::becomeOrdinaryUser(argv);

    const QStringList wanted = parser.positionalArguments();
    Report report;
    bool isWhole = true;
    for (const Group &group : groups) {
        if (group.isForX11Alone && effort.on != StageKind::x11)
            continue;
        if (wanted.isEmpty() || wanted.contains(QLatin1String(group.name)))
            isWhole = measureGroup(group, report, effort) && isWhole;
    }
    std::fputs(report.markdown().toUtf8().constData(), stdout);
    return isWhole ? 0 : 1;
}
