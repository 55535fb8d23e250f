#include "bench/Figures.h"
#include "bench/Report.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <exception>

namespace {

using namespace quillmender::bench;

struct Group {
    const char *name;
    void (*measure)(Report &, const Effort &);
};

constexpr Group groups[] = {{"start", measureStart},     {"idle", measureIdle},
                            {"panel", measurePanel},     {"windows", measureWindows},
                            {"session", measureSession}, {"large", measureLargeText}};

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
    parser.addOptions({quick, repetitions});
    parser.addPositionalArgument(
        QStringLiteral("group"),
        QStringLiteral("start, idle, panel, windows, session or large; else all."),
        QStringLiteral("[group...]"));
    parser.process(application);

    Effort effort;
    if (parser.isSet(quick))
        effort = {.repetitions = 3, .idleSeconds = 5, .typedKeys = 50, .openings = 100};
    if (parser.isSet(repetitions))
        effort.repetitions = std::max(1, parser.value(repetitions).toInt());

    const QStringList wanted = parser.positionalArguments();
    Report report;
    bool isWhole = true;
    for (const Group &group : groups) {
        if (wanted.isEmpty() || wanted.contains(QLatin1String(group.name)))
            isWhole = measureGroup(group, report, effort) && isWhole;
    }
    std::fputs(report.markdown().toUtf8().constData(), stdout);
    return isWhole ? 0 : 1;
}
