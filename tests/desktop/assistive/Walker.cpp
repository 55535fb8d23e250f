#include "desktop/assistive/Walker.h"

#include "desktop/harness/Desktop.h"

namespace quillmender {

namespace {

harness::Command walk(harness::Desktop &desktop, qint64 programId, const QString &name) {
    harness::Command command =
        desktop.command(QStringLiteral(QUILLMENDER_WALKER),
                        {desktop.accessibilityBus()->address(), QString::number(programId)});
    command.logFile = desktop.folders().log(name);
    return command;
}

} // namespace

Walker::Walker(harness::Desktop &desktop, qint64 programId, const QString &name)
    : process_(walk(desktop, programId, name)) {}

QList<int> Walker::walks() const {
    QList<int> result;
    for (const QByteArray &line : process_.log().split('\n')) {
        if (!line.isEmpty())
            result.append(line.toInt());
    }
    return result;
}

} // namespace quillmender
