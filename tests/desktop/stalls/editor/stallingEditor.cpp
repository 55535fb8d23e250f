#include "desktop/stalls/editor/AccessibleText.h"
#include "desktop/stalls/editor/StallingObject.h"

#include <QApplication>
#include <QShortcut>
#include <QVBoxLayout>

// Usage: stalling-editor NAME ADDRESS on|off
// A text editor that calls itself NAME on the accessibility bus at ADDRESS, and is known as an
// application there or not.
int main(int argc, char *argv[]) {
    // What it is on that bus it makes itself: the toolkit must not find the bus.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    qunsetenv("AT_SPI_BUS_ADDRESS");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();

    QWidget window;
    window.setWindowTitle(QStringLiteral("Stalling editor: ") + arguments.value(1));
    auto *layout = new QVBoxLayout(&window);
    auto *field = new QPlainTextEdit;
    layout->addWidget(field);
    window.resize(480, 240);

    QDBusConnection bus =
        QDBusConnection::connectToBus(arguments.value(2), QStringLiteral("accessibility"));
    quillmender::AccessibleText text(*field, bus);
    quillmender::StallingObject object(*field, text, bus);
    const QShortcut sentinel(QKeySequence(Qt::Key_F12), &window);
    QObject::connect(&sentinel, &QShortcut::activated, [&object] { object.noteSentinel(); });
    const bool isThere =
        bus.registerVirtualObject(QStringLiteral("/"), &object, QDBusConnection::SubPath) &&
        bus.registerService(arguments.value(1));
    if (!isThere)
        return EXIT_FAILURE;
    window.show();
    field->setFocus();
    if (arguments.value(3) == QStringLiteral("on"))
        text.join();
    return QApplication::exec();
}
