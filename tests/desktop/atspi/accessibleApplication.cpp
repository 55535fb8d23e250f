#include "desktop/atspi/ScriptedApplication.h"

#include <QCoreApplication>
#include <QTextStream>

// Arguments: the address of the accessibility bus, "active" or "inactive", the number of the
// field's role, its text, and where its selection starts and ends.
int main(int argc, char *argv[]) {
    const QCoreApplication program(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    quillmender::atspi::ScriptedApplication application(arguments.value(1), arguments.value(4));
    application.isActive = arguments.value(2) == QStringLiteral("active");
    application.fieldRole = arguments.value(3).toUInt();
    application.selectionStart = arguments.value(5).toInt();
    application.selectionEnd = arguments.value(6).toInt();
    application.join();
    QTextStream(stdout) << "ready" << Qt::endl;
    return QCoreApplication::exec();
}
