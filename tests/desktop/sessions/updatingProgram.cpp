#include "app/AppDelegate.h"

#include <QApplication>

// The program as it is, but for the address of its release manifest, which a build fixes: here it
// is the one argument.
int main(int argc, char *argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("Quillmender"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.quillmender.Quillmender"));
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(
        quillmender::AppDelegate::applicationShouldTerminateAfterLastWindowClosed());

    quillmender::AppDelegate delegate(quillmender::makePlatform(),
                                      QUrl(QString::fromLocal8Bit(argv[argc - 1])));
    if (delegate.applicationDidFinishLaunching().outcome !=
        quillmender::InstanceClaim::Outcome::held)
        return 1;
    return QApplication::exec();
}
