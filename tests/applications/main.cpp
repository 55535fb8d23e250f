#include "applications/ApplicationRun.h"
#include "applications/Catalog.h"
#include "applications/Report.h"
#include "applications/Surroundings.h"
#include "desktop/harness/Artifacts.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/wayland/OrdinaryUser.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <iostream>

using namespace quillmender::applications;

namespace {

/// What CTest takes for a test that could not be made.
constexpr int skipped = 77;

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
bool tryApplication(const Application &application, Surroundings surroundings,
                    const QString &scenario, const QString &artifacts, Report *report) {
    const QString version = installedVersion(application.package);
    if (version.isEmpty()) {
        std::cout << application.id.toStdString() << " is not installed" << std::endl;
        return report == nullptr;
    }
    QList<Observation> seen;
    try {
        ApplicationRun run(application, surroundings, artifacts);
        seen = run.run(scenario, [&](const Observation &each) { tell(application, each); });
    } catch (const quillmender::harness::HarnessError &error) {
        seen.append(Observation::notStarted(error.what()));
        tell(application, seen.last());
    }
    if (report != nullptr)
        report->keep(application, version, seen);
    return std::all_of(seen.begin(), seen.end(), [](const Observation &each) {
        return each.verdict == Observation::Verdict::replaced ||
               each.verdict == Observation::Verdict::refused;
    });
}

QString artifactsOf(const QString &desktop) {
    const QString folder =
        quillmender::harness::artifactsFolder() + QStringLiteral("/applications");
    return desktop == QStringLiteral("x11") ? folder : folder + QLatin1Char('-') + desktop;
}

bool isKnown(const QList<Application> &all, const QString &name) {
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
    const QCommandLineOption desktop(QStringLiteral("desktop"),
                                     QStringLiteral("x11 (default), sway or kwin."),
                                     QStringLiteral("name"), QStringLiteral("x11"));
    const QCommandLineOption only(
        QStringLiteral("write-only"),
        QStringLiteral("Tries nothing, and writes the document of what is kept."));
    const QCommandLineOption scenario(QStringLiteral("scenario"),
                                      QStringLiteral("Only those whose name contains this."),
                                      QStringLiteral("text"));
    const QCommandLineOption results(QStringLiteral("results"),
                                     QStringLiteral("Where what was seen is kept."),
                                     QStringLiteral("folder"));
    const QCommandLineOption document(QStringLiteral("document"),
                                      QStringLiteral("What is written from all that is kept."),
                                      QStringLiteral("file"));
    const QCommandLineOption artifacts(QStringLiteral("artifacts"),
                                       QStringLiteral("For pictures and logs of what is wrong."),
                                       QStringLiteral("folder"));
    parser.addOptions({list, desktop, only, scenario, results, document, artifacts});
    parser.addPositionalArgument(QStringLiteral("application"),
                                 QStringLiteral("Only these; all without any."),
                                 QStringLiteral("[application...]"));
    parser.process(program);

    const auto surroundings = surroundingsNamed(parser.value(desktop));
    if (!surroundings) {
        std::cerr << "no such desktop: " << parser.value(desktop).toStdString() << std::endl;
        return 2;
    }
    const QList<Application> all = catalog(*surroundings);
    const bool isTried = !parser.isSet(list) && !parser.isSet(only);
    if (isTried && *surroundings != Surroundings::x11)
        quillmender::harness::becomeOrdinaryUser(argv);
    const QStringList missing = isTried ? missingPrograms(*surroundings) : QStringList();
    if (!missing.isEmpty()) {
        std::cout << "not installed: " << missing.join(QStringLiteral(", ")).toStdString()
                  << std::endl;
        return skipped;
    }
    const QString pictures =
        parser.isSet(artifacts) ? parser.value(artifacts) : artifactsOf(parser.value(desktop));

    std::optional<Report> report;
    if (parser.isSet(results))
        report.emplace(parser.value(results), *surroundings);
    const QStringList wanted = parser.positionalArguments();
    for (const QString &name : wanted) {
        if (!isKnown(all, name)) {
            std::cerr << name.toStdString() << " is not known; --list names all" << std::endl;
            return 2;
        }
    }
    bool isGood = true;
    for (const Application &application : all) {
        if (parser.isSet(list)) {
            std::cout << application.id.toStdString() << std::endl;
            continue;
        }
        if (!isTried || (!wanted.isEmpty() && !wanted.contains(application.id)))
            continue;
        isGood = tryApplication(application, *surroundings, parser.value(scenario), pictures,
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
