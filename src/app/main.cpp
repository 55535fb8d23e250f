#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/LogFilter.h"
#include "platform/ApplicationId.h"
#include "platform/Process.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

int main(int argc, char *argv[]) {
    quillmender::prepareProcess();
    if (const auto status = quillmender::runErrand(argc, argv))
        return *status;
    // Before the toolkit looks for a display.
    if (const auto answer = quillmender::commandLineAnswer({argv, argv + argc}))
        return std::fputs(answer->c_str(), stdout) < 0 ? EXIT_FAILURE : EXIT_SUCCESS;

    quillmender::keepTextsOutOfTheLog();
    // Not as the display name, which the toolkit would append to the title of every window.
    QCoreApplication::setApplicationName(QStringLiteral("Quillmender"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUILLMENDER_VERSION));
    QGuiApplication::setDesktopFileName(QString::fromLatin1(quillmender::applicationId));
    // A session manager that hangs would hold up the start, and one that dies would end the program
    // on the spot, with the user's clipboard still borrowed. What a log-out needs comes as a
    // signal.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(
        quillmender::AppDelegate::applicationShouldTerminateAfterLastWindowClosed());

    quillmender::AppDelegate delegate(quillmender::makePlatform());
    const quillmender::InstanceClaim claim = delegate.applicationDidFinishLaunching();
    switch (claim.outcome) {
    case quillmender::InstanceClaim::Outcome::held:
        break;
    case quillmender::InstanceClaim::Outcome::otherActivated:
        return EXIT_SUCCESS;
    case quillmender::InstanceClaim::Outcome::failed:
        std::fprintf(stderr, "quillmender: %s\n", qUtf8Printable(claim.reason));
        return EXIT_FAILURE;
    }
    return QApplication::exec();
}
