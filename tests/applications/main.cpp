#include "applications/ApplicationRun.h"
#include "applications/Catalog.h"
#include "applications/Report.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <iostream>

using namespace quillmender::applications;

namespace {

const char *nameOf(Observation::Verdict verdict) {
    switch (verdict) {
    case Observation::Verdict::replaced:
        return "replaced";
    case Observation::Verdict::refused:
        return "refused";
    case Observation::Verdict::wrong:
        return "WRONG";
    case Observation::Verdict::notTried:
        break;
    }
    return "NOT TRIED";
}

void tell(const Application &application, const Observation &seen) {
    const auto number = [](const std::optional<int> &value) {
        return value ? std::to_string(*value) : std::string("-");
    };
    std::cout << application.id.toStdString() << " | " << seen.scenario.toStdString() << " | "
              << nameOf(seen.verdict) << " | " << seen.capture.toStdString() << " | "
              << seen.route.toStdString() << " | selected "
              << (seen.isInsertedSelected ? (*seen.isInsertedSelected ? "yes" : "no") : "-")
              << " | undo " << number(seen.undoSteps) << " | clipboard "
              << (seen.clipboardIdentical ? (*seen.clipboardIdentical ? "identical" : "DIFFERENT")
                                          : "-")
              << " | " << number(seen.hotKeyToPanelMs) << " ms, " << number(seen.answerToTextMs)
              << " ms | " << seen.message.toStdString() << seen.remark.toStdString() << std::endl;
}

/// Whether every session ended as it may.
bool tryApplication(const Application &application, const QString &scenario,
                    const QString &artifacts, Report *report) {
    const QString version = installedVersion(application.package);
    if (version.isEmpty()) {
        std::cout << application.id.toStdString() << " is not installed" << std::endl;
        return report == nullptr;
    }
    ApplicationRun run(application, artifacts);
    const QList<Observation> seen =
        run.run(scenario, [&](const Observation &each) { tell(application, each); });
    if (report != nullptr)
        report->keep(application, version, seen);
    return std::all_of(seen.begin(), seen.end(), [](const Observation &each) {
        return each.verdict == Observation::Verdict::replaced ||
               each.verdict == Observation::Verdict::refused;
    });
}

bool isKnown(const QString &name) {
    const QList<Application> &all = catalog();
    return std::ranges::find(all, name, &Application::id) != all.end();
}

} // namespace

int main(int argc, char *argv[]) {
    const QCoreApplication program(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Runs whole sessions with real applications and writes down what is seen."));
    parser.addHelpOption();
    const QCommandLineOption list(QStringLiteral("list"), QStringLiteral("Names them and ends."));
    const QCommandLineOption scenario(QStringLiteral("scenario"),
                                      QStringLiteral("Only those whose name contains this."),
                                      QStringLiteral("text"));
    const QCommandLineOption results(QStringLiteral("results"),
                                     QStringLiteral("Where what was seen is kept."),
                                     QStringLiteral("folder"));
    const QCommandLineOption document(QStringLiteral("document"),
                                      QStringLiteral("What is written from all that is kept."),
                                      QStringLiteral("file"));
    const QCommandLineOption artifacts(
        QStringLiteral("artifacts"), QStringLiteral("For pictures and logs of what is wrong."),
        QStringLiteral("folder"), QStringLiteral("build/artifacts/applications"));
    parser.addOptions({list, scenario, results, document, artifacts});
    parser.addPositionalArgument(QStringLiteral("application"),
                                 QStringLiteral("Only these; all without any."),
                                 QStringLiteral("[application...]"));
    parser.process(program);

    std::optional<Report> report;
    if (parser.isSet(results))
        report.emplace(parser.value(results));
    const QStringList wanted = parser.positionalArguments();
    for (const QString &name : wanted) {
        if (!isKnown(name)) {
            std::cerr << name.toStdString() << " is not known; --list names all" << std::endl;
            return 2;
        }
    }
    bool isGood = true;
    for (const Application &application : catalog()) {
        if (parser.isSet(list)) {
            std::cout << application.id.toStdString() << std::endl;
            continue;
        }
        if (!wanted.isEmpty() && !wanted.contains(application.id))
            continue;
        isGood = tryApplication(application, parser.value(scenario), parser.value(artifacts),
                                report ? &*report : nullptr) &&
                 isGood;
    }
    if (report && parser.isSet(document)) {
        QFile file(parser.value(document));
        if (!file.open(QIODevice::WriteOnly))
            return 2;
        file.write(report->markdown().toUtf8());
    }
    return isGood ? 0 : 1;
}
