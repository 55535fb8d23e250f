#include "desktop/atspi/ScriptedApplication.h"

#include <QCoreApplication>
#include <QTextStream>

// Arguments: the address of the accessibility bus, "active" or "inactive", the number of the
// field's role, its text, where its selection starts and ends, and so many more of these pairs: the
// next one is taken whenever the text has been read.
int main(int argc, char *argv[]) {
    const QCoreApplication program(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    quillmender::atspi::ScriptedApplication application(arguments.value(1), arguments.value(4));
    application.isActive = arguments.value(2) == QStringLiteral("active");
    application.fieldRole = arguments.value(3).toUInt();
    application.selectionStart = arguments.value(5).toInt();
    application.selectionEnd = arguments.value(6).toInt();
    qsizetype next = 7;
    application.whenRead = [&] {
        if (next >= arguments.size())
            return;
        application.selectionStart = arguments.value(next).toInt();
        application.selectionEnd = arguments.value(next + 1).toInt();
        next += 2;
    };
    application.join();
    QTextStream(stdout) << "ready" << Qt::endl;
    return QCoreApplication::exec();
}
