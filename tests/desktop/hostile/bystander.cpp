#include <QCoreApplication>
#include <QDBusConnection>

/// A program that does nothing but answer on the session bus: what it takes to answer is what the
/// machine takes.
int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QObject object;
    QDBusConnection bus = QDBusConnection::sessionBus();
    const bool isThere = bus.registerObject(QStringLiteral("/bystander"), &object,
                                            QDBusConnection::ExportAllProperties) &&
                         bus.registerService(QStringLiteral("com.quillmender.Bystander"));
    return isThere ? QCoreApplication::exec() : EXIT_FAILURE;
}
