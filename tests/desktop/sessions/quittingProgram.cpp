#include "app/AppDelegate.h"

#include <QApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>

// The program as it is, but SIGUSR1 makes it quit as a menu of the system does: by the toolkit.
int main(int argc, char *argv[]) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGUSR1);
    sigprocmask(SIG_BLOCK, &signals, nullptr);

    QCoreApplication::setApplicationName(QStringLiteral("Quillmender"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.quillmender.Quillmender"));
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(
        quillmender::AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
    QSocketNotifier notifier(signalfd(-1, &signals, SFD_CLOEXEC), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&notifier] {
        notifier.setEnabled(false);
        QCoreApplication::quit();
    });

    quillmender::AppDelegate delegate(quillmender::makePlatform());
    if (delegate.applicationDidFinishLaunching().outcome !=
        quillmender::InstanceClaim::Outcome::held)
        return 1;
    return QApplication::exec();
}
