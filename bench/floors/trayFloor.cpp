#include <QApplication>
#include <QDBusConnection>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

// The least that a program of the status area is: an icon with a menu, and a name on the bus, by
// which it is seen from outside that its event loop runs.
int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    QMenu menu;
    for (const char *title : {"First", "Second", "Third", "Fourth", "Fifth"})
        menu.addAction(QString::fromLatin1(title));

    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::blue);
    QSystemTrayIcon trayIcon{QIcon(pixmap)};
    trayIcon.setContextMenu(&menu);
    trayIcon.show();

    QObject object;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(QStringLiteral("/com/quillmender/FloorTray"), &object);
    bus.registerService(QStringLiteral("com.quillmender.FloorTray"));
    return QApplication::exec();
}
